#include "vynhost/AudioContainer.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace vynhost {

namespace {

constexpr std::uint64_t kAll32Bits = 0xFFFFFFFF;
constexpr std::uint64_t kAll64Bits = 0xFFFFFFFFFFFFFFFF;

class Bytes {
public:
    explicit Bytes(std::string const& path) : mFile(path, std::ios::binary) {
        std::error_code error;
        std::uintmax_t const size = std::filesystem::file_size(path, error);
        mSize = error ? 0 : size;
    }

    std::uint64_t Size() const { return mSize; }
    std::uint64_t SizeFrom(std::uint64_t place) const { return mSize > place ? mSize - place : 0; }

    std::string Text(std::uint64_t place) {
        std::string text(4, '\0');
        Read(place, text.data(), text.size());
        return text;
    }

    std::uint64_t Number(std::uint64_t place, unsigned size, bool bigEndian) {
        std::array<char, 8> raw{};
        Read(place, raw.data(), size);
        std::uint64_t value = 0;
        for (unsigned i = 0; i < size; ++i)
            value = value << 8 | static_cast<unsigned char>(raw[bigEndian ? i : size - 1 - i]);
        return value;
    }

private:
    void Read(std::uint64_t place, char* to, std::size_t size) {
        mFile.clear();
        mFile.seekg(static_cast<std::streamoff>(place));
        mFile.read(to, static_cast<std::streamsize>(size));
    }

    std::ifstream mFile;
    std::uint64_t mSize = 0;
};

// A kind of file that is a row of chunks, each with a name, a size, and so many bytes.
struct ChunkLayout {
    std::string_view fileID;
    std::string_view audioID;
    unsigned firstChunk;
    unsigned sizeBytes;
    bool bigEndian;
    unsigned alignment;
};

constexpr std::array kChunkLayouts{
    ChunkLayout{"RIFF", "data", 12, 4, false, 2}, ChunkLayout{"RIFX", "data", 12, 4, true, 2},
    ChunkLayout{"RF64", "data", 12, 4, false, 2}, ChunkLayout{"FORM", "SSND", 12, 4, true, 2},
    ChunkLayout{"caff", "data", 8, 8, true, 1},
};

std::optional<Shortfall> Compare(std::uint64_t promised, std::uint64_t present) {
    if (promised <= present)
        return std::nullopt;
    return Shortfall{promised, present};
}

std::optional<Shortfall> CompareChunks(Bytes& bytes, ChunkLayout const& layout) {
    constexpr int kMostChunks = 10000;
    std::uint64_t longSize = kAll32Bits;
    std::uint64_t place = layout.firstChunk;
    for (int i = 0; i < kMostChunks && place < bytes.Size(); ++i) {
        std::string const id = bytes.Text(place);
        std::uint64_t const size = bytes.Number(place + 4, layout.sizeBytes, layout.bigEndian);
        std::uint64_t const start = place + 4 + layout.sizeBytes;
        if (id == layout.audioID && size == kAll64Bits)
            return std::nullopt;
        if (id == layout.audioID)
            return Compare(size == kAll32Bits ? longSize : size, bytes.SizeFrom(start));
        // The sizes that are too long for the chunks of an RF64 file.
        if (id == "ds64")
            longSize = bytes.Number(start + 8, 8, false);
        if (size > bytes.SizeFrom(start))
            return std::nullopt;
        place = start + (size + layout.alignment - 1) / layout.alignment * layout.alignment;
    }
    return std::nullopt;
}

std::optional<Shortfall> CompareAU(Bytes& bytes) {
    std::uint64_t const size = bytes.Number(8, 4, true);
    return size == kAll32Bits ? std::nullopt : Compare(size, bytes.SizeFrom(bytes.Number(4, 4, true)));
}

} // namespace

std::optional<Shortfall> FindShortfall(std::string const& path) {
    Bytes bytes(path);
    std::string const fileID = bytes.Text(0);
    if (fileID == ".snd")
        return CompareAU(bytes);
    // W64: the size of the whole file, behind an identifier of 16 bytes.
    if (fileID == "riff")
        return Compare(bytes.Number(16, 8, false), bytes.Size());
    auto const layout = std::ranges::find(kChunkLayouts, fileID, &ChunkLayout::fileID);
    return layout == kChunkLayouts.end() ? std::nullopt : CompareChunks(bytes, *layout);
}

} // namespace vynhost
