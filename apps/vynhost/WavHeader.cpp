#include "vynhost/WavHeader.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace vynhost {

namespace {

constexpr std::uint64_t kSizeIn64Bits = 0xFFFFFFFF;

// Reads the chunks of a RIFF file one by one.
class ChunkReader {
public:
    explicit ChunkReader(std::string const& path) : mFile(path, std::ios::binary) {
        std::error_code error;
        std::uintmax_t const size = std::filesystem::file_size(path, error);
        mFileSize = error ? 0 : size;
    }

    bool ReadFileHeader() {
        std::string const form = ReadText();
        mBigEndian = form == "RIFX";
        ReadNumber(4);
        return ReadText() == "WAVE" && (mBigEndian || form == "RIFF" || form == "RF64");
    }

    bool NextChunk() {
        mFile.seekg(static_cast<std::streamoff>(mNext));
        mID = ReadText();
        mSize = ReadNumber(4);
        mStart = mNext + 8;
        mNext = mStart + mSize + mSize % 2;
        return mFile.good();
    }

    std::string_view GetID() const { return mID; }
    std::uint64_t GetSize() const { return mSize; }
    std::uint64_t GetPresentSize() const { return mFileSize > mStart ? mFileSize - mStart : 0; }

    std::uint64_t ReadNumber(unsigned bytes) {
        std::array<unsigned char, 8> raw{};
        mFile.read(reinterpret_cast<char*>(raw.data()), bytes);
        std::uint64_t value = 0;
        for (unsigned i = 0; i < bytes; ++i)
            value = value << 8 | raw[mBigEndian ? i : bytes - 1 - i];
        return value;
    }

private:
    std::string ReadText() {
        std::string text(4, '\0');
        mFile.read(text.data(), 4);
        return text;
    }

    std::ifstream mFile;
    std::uint64_t mFileSize = 0;
    bool mBigEndian = false;
    std::string mID;
    std::uint64_t mSize = 0;
    std::uint64_t mStart = 0;
    std::uint64_t mNext = 12;
};

} // namespace

std::optional<WavData> FindWavData(std::string const& path) {
    constexpr int kMostChunks = 10000;
    ChunkReader reader(path);
    if (!reader.ReadFileHeader())
        return std::nullopt;
    std::uint64_t size64 = kSizeIn64Bits;
    for (int i = 0; i < kMostChunks && reader.NextChunk(); ++i) {
        if (reader.GetID() == "ds64") {
            reader.ReadNumber(8);
            size64 = reader.ReadNumber(8);
        } else if (reader.GetID() == "data") {
            std::uint64_t const promised = reader.GetSize() == kSizeIn64Bits ? size64 : reader.GetSize();
            return WavData{promised, reader.GetPresentSize()};
        }
    }
    return std::nullopt;
}

} // namespace vynhost
