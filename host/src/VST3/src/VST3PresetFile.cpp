#include "vynaudiofilterhost/VST3/src/VST3PresetFile.h"

#include "vynaudiofilterhost/VST3/src/LittleEndian.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Span = std::span<unsigned char const>;

namespace {

constexpr std::string_view kMagic = "VST3";
constexpr std::string_view kListName = "List";
constexpr std::string_view kComponentName = "Comp";
constexpr std::string_view kControllerName = "Cont";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kNameBytes = 4;
constexpr std::size_t kClassIDPlace = 8;
constexpr std::size_t kClassIDBytes = 32;
constexpr std::size_t kListPlace = kClassIDPlace + kClassIDBytes;
constexpr std::size_t kHeaderBytes = kListPlace + 8;
constexpr std::size_t kListHeaderBytes = kNameBytes + 4;
constexpr std::size_t kEntryBytes = kNameBytes + 16;

std::string_view TextAt(Span bytes, std::size_t place, std::size_t size) {
    return {reinterpret_cast<char const*>(bytes.data()) + place, size};
}

void AppendText(ChunkBytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

bool IsHexadecimal(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'F');
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'f' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return upper;
}

// The part of a file; false when it does not lie within.
bool FindPart(Span file, std::uint64_t place, std::uint64_t size, Span& part) {
    if (place > file.size() || size > file.size() - place)
        return false;
    part = file.subspan(static_cast<std::size_t>(place), static_cast<std::size_t>(size));
    return true;
}

struct Entry {
    std::string_view name;
    Span content;
};

// The entries' own bytes.
bool FindEntries(Span file, Span& entries) {
    Span list;
    auto const place = ReadLittleEndian<std::uint64_t>(file.subspan(kListPlace));
    if (!FindPart(file, place, kListHeaderBytes, list) || TextAt(list, 0, kNameBytes) != kListName)
        return false;
    std::uint64_t const count = ReadLittleEndian<std::uint32_t>(list.subspan(kNameBytes));
    return FindPart(file, place + kListHeaderBytes, count * kEntryBytes, entries);
}

char const* ReadStates(Span file, VST3States& states) {
    Span entries;
    if (!FindEntries(file, entries))
        return "it is cut short: its list of chunks is missing";
    bool component = false;
    bool controller = false;
    for (; !entries.empty(); entries = entries.subspan(kEntryBytes)) {
        std::string_view const name = TextAt(entries, 0, kNameBytes);
        Span* const wanted = name == kComponentName && !std::exchange(component, true)     ? &states.component
                             : name == kControllerName && !std::exchange(controller, true) ? &states.controller
                                                                                           : nullptr;
        auto const place = ReadLittleEndian<std::uint64_t>(entries.subspan(kNameBytes));
        auto const size = ReadLittleEndian<std::uint64_t>(entries.subspan(kNameBytes + 8));
        if (wanted && !FindPart(file, place, size, *wanted))
            return "it is cut short: a chunk does not lie within the file";
    }
    states.whole = component || controller;
    return states.whole ? nullptr : "it holds no state of a plug-in";
}

void AppendEntry(ChunkBytes& list, std::string_view name, std::size_t place, std::size_t size) {
    AppendText(list, name);
    AppendLittleEndian(list, std::uint64_t{place});
    AppendLittleEndian(list, std::uint64_t{size});
}

} // namespace

bool IsVST3PresetFile(Span bytes) {
    return bytes.size() >= kMagic.size() && TextAt(bytes, 0, kMagic.size()) == kMagic;
}

char const* ParseVST3PresetFile(Span bytes, VST3PresetContent& content) {
    content = {};
    if (!IsVST3PresetFile(bytes))
        return "it is no preset file of a VST3 plug-in";
    if (bytes.size() < kHeaderBytes)
        return "it is cut short within its header";
    if (ReadLittleEndian<std::uint32_t>(bytes.subspan(kMagic.size())) != kVersion)
        return "it is of another version";
    content.classID = UpperCase(TextAt(bytes, kClassIDPlace, kClassIDBytes));
    if (!std::ranges::all_of(content.classID, IsHexadecimal))
        return "the class ID in it is none";
    return ReadStates(bytes, content.states);
}

ChunkBytes MakeVST3PresetFile(VST3PresetContent const& content) {
    ChunkBytes file;
    ChunkBytes list;
    std::size_t const end = kHeaderBytes + content.states.component.size() + content.states.controller.size();
    file.reserve(end + kListHeaderBytes + 2 * kEntryBytes);
    AppendText(file, kMagic);
    AppendLittleEndian(file, kVersion);
    AppendText(file, content.classID);
    AppendLittleEndian(file, std::uint64_t{end});
    std::uint32_t count = 0;
    for (auto const& [name, state] :
         {Entry{kComponentName, content.states.component}, Entry{kControllerName, content.states.controller}}) {
        if (state.empty() && name != kComponentName)
            continue;
        AppendEntry(list, name, file.size(), state.size());
        file.insert(file.end(), state.begin(), state.end());
        ++count;
    }
    AppendText(file, kListName);
    AppendLittleEndian(file, count);
    file.insert(file.end(), list.begin(), list.end());
    return file;
}

std::string PresetClassID(Steinberg::TUID const classID) {
    char text[kClassIDBytes + 1] = {};
    Steinberg::FUID::fromTUID(classID).toString(text);
    return text;
}

} // namespace vynaudiofilterhost::vst3
