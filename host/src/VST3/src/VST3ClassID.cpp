#include "vynaudiofilterhost/VST3/src/VST3ClassID.h"

#include "vynaudiofilterhost/inventory/TechnologyType.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace vynaudiofilterhost::vst3 {

namespace {

constexpr std::size_t kWordCount = 4;

// For each word its bytes' places in the ID, most significant first.
constexpr std::size_t kBytesOfWord[kWordCount][4] = {{3, 2, 1, 0}, {5, 4, 7, 6}, {8, 9, 10, 11}, {12, 13, 14, 15}};

using Words = std::array<std::uint32_t, kWordCount>;

Words WordsOf(Steinberg::TUID const& classID) {
    Words words{};
    for (std::size_t word = 0; word < kWordCount; ++word) {
        for (std::size_t const place : kBytesOfWord[word])
            words[word] = words[word] << 8 | static_cast<unsigned char>(classID[place]);
    }
    return words;
}

void StoreWord(std::size_t word, std::uint32_t value, Steinberg::TUID& classID) {
    unsigned shift = 32;
    for (std::size_t const place : kBytesOfWord[word]) {
        shift -= 8;
        classID[place] = static_cast<char>(value >> shift & 0xFF);
    }
}

} // namespace

vyncore::UString MakeFilterClassIDText(Steinberg::TUID const& classID) {
    Words const words = WordsOf(classID);
    char text[40];
    std::snprintf(text, sizeof text, "%08x %x %x %x", words[0], words[1], words[2], words[3]);
    return vyncore::string::AsciiToUTF16(text);
}

vyncore::UString FormatVST3ClassID(Steinberg::TUID const& classID) {
    vyncore::oUTF16StringStream text;
    text << static_cast<int>(kTechnologyVST3) << u':' << MakeFilterClassIDText(classID);
    return text.str();
}

void ParseVST3ClassID(vyncore::UString const& text, Steinberg::TUID& classID) {
    std::memset(classID, 0, sizeof classID);
    bool const hasPrefix = text.size() > 2 && text[1] == u':';
    vyncore::iUTF16StringStream words(text.substr(hasPrefix ? 2 : 0));
    words.SetHex(true);
    for (std::size_t word = 0; word < kWordCount; ++word) {
        unsigned value = 0;
        words >> value;
        StoreWord(word, value, classID);
    }
}

} // namespace vynaudiofilterhost::vst3
