#include "vyncore/utility/BinaryText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace vyncore::utility {

namespace {

using Bytes = std::vector<unsigned char, allocator::STLAllocator<unsigned char>>;

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kPadding = '=';

// A block is converted on the stack and then appended, so that no memory is touched twice: a text or a vector that is
// made larger is filled with zeros first.
constexpr std::size_t kGroupsInBlock = 1024;

// The two letters of each number of 12 bits.
using LetterPair = std::array<char, 2>;
constexpr auto kPairs = [] {
    std::array<LetterPair, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {kLetters[bits >> 6], kLetters[bits & 63]};
    return pairs;
}();

// The six bits of each letter at its place, first to last, in a group of four; kNoLetter for every other character.
constexpr std::uint32_t kNoLetter = 1u << 31;
using LetterValues = std::array<std::uint32_t, 256>;
constexpr auto kValues = [] {
    std::array<LetterValues, 4> values{};
    for (std::size_t place = 0; place < values.size(); ++place) {
        values[place].fill(kNoLetter);
        for (std::uint32_t value = 0; value < kLetters.size(); ++value)
            values[place][static_cast<unsigned char>(kLetters[value])] = value << (18 - 6 * place);
    }
    return values;
}();

constexpr auto kIsBlank = [] {
    std::array<bool, 256> isBlank{};
    for (char const blank : {' ', '\t', '\r', '\n'})
        isBlank[static_cast<unsigned char>(blank)] = true;
    return isBlank;
}();

void EncodeGroup(unsigned char const* bytes, char* letters) {
    unsigned const bits = bytes[0] * 0x10000u + bytes[1] * 0x100u + bytes[2];
    std::memcpy(letters, kPairs[bits >> 12].data(), 2);
    std::memcpy(letters + 2, kPairs[bits & 0xFFFu].data(), 2);
}

// The 24 bits of four letters; above them kNoLetter when one is none.
std::uint32_t DecodeGroup(char const* letters) {
    auto const value = [&](std::size_t place) { return kValues[place][static_cast<unsigned char>(letters[place])]; };
    return value(0) | value(1) | value(2) | value(3);
}

void StoreGroup(std::uint32_t bits, unsigned char* bytes) {
    bytes[0] = static_cast<unsigned char>(bits >> 16);
    bytes[1] = static_cast<unsigned char>(bits >> 8);
    bytes[2] = static_cast<unsigned char>(bits);
}

void EncodeGroups(unsigned char const* data, std::size_t groups, UTF8String& text) {
    std::array<char, 4 * kGroupsInBlock> block;
    while (groups > 0) {
        std::size_t const now = std::min(groups, kGroupsInBlock);
        for (std::size_t group = 0; group < now; ++group)
            EncodeGroup(data + 3 * group, block.data() + 4 * group);
        text.append(block.data(), 4 * now);
        data += 3 * now;
        groups -= now;
    }
}

void EncodeRest(unsigned char const* data, std::size_t size, UTF8String& text) {
    if (size == 0)
        return;
    std::array<unsigned char, 3> bytes{};
    std::copy_n(data, size, bytes.begin());
    std::array<char, 4> letters;
    EncodeGroup(bytes.data(), letters.data());
    std::fill(letters.begin() + static_cast<std::ptrdiff_t>(size) + 1, letters.end(), kPadding);
    text.append(letters.data(), letters.size());
}

bool DecodeGroups(char const* letters, std::size_t groups, Bytes& data) {
    std::array<unsigned char, 3 * kGroupsInBlock> block;
    while (groups > 0) {
        std::size_t const now = std::min(groups, kGroupsInBlock);
        std::uint32_t seen = 0;
        for (std::size_t group = 0; group < now; ++group) {
            std::uint32_t const bits = DecodeGroup(letters + 4 * group);
            seen |= bits;
            StoreGroup(bits, block.data() + 3 * group);
        }
        if ((seen & kNoLetter) != 0)
            return false;
        data.insert(data.end(), block.data(), block.data() + 3 * now);
        letters += 4 * now;
        groups -= now;
    }
    return true;
}

// The last group, which may be padded.
bool DecodeLastGroup(std::string_view group, Bytes& data) {
    std::array<char, 4> letters;
    std::copy_n(group.begin(), letters.size(), letters.begin());
    std::size_t const padding = letters[3] != kPadding ? 0 : letters[2] != kPadding ? 1 : 2;
    // As letters whose bits are all 0.
    std::fill(letters.end() - static_cast<std::ptrdiff_t>(padding), letters.end(), kLetters[0]);
    std::uint32_t const bits = DecodeGroup(letters.data());
    std::uint32_t const leftOver = bits & ((1u << (8 * padding)) - 1u);
    std::array<unsigned char, 3> bytes;
    StoreGroup(bits, bytes.data());
    data.insert(data.end(), bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(padding));
    return (bits & kNoLetter) == 0 && leftOver == 0;
}

bool DecodeLetters(std::string_view text, Bytes& data) {
    data.clear();
    if (text.empty() || text.size() % 4 != 0)
        return text.empty();
    std::size_t const wholeGroups = text.size() / 4 - 1;
    data.reserve(3 * wholeGroups + 3);
    return DecodeGroups(text.data(), wholeGroups, data) && DecodeLastGroup(text.substr(4 * wholeGroups), data);
}

UTF8String WithoutBlanks(UTF8String const& text) {
    UTF8String letters(text.size(), '\0');
    std::size_t length = 0;
    for (char const character : text) {
        letters[length] = character;
        length += kIsBlank[static_cast<unsigned char>(character)] ? 0 : 1;
    }
    letters.resize(length);
    return letters;
}

} // namespace

bool EncodeBinaryDataToUTF8String(unsigned char const* data, std::uint64_t size, UTF8String& text) {
    if ((!data && size > 0) || size > text.max_size() / 4 * 3) {
        text.clear();
        return false;
    }
    auto const bytes = static_cast<std::size_t>(size);
    UTF8String encoded;
    encoded.reserve((bytes + 2) / 3 * 4);
    std::size_t const groups = bytes / 3;
    EncodeGroups(data, groups, encoded);
    EncodeRest(data + 3 * groups, bytes - 3 * groups, encoded);
    text = std::move(encoded);
    return true;
}

// Hardly any text is wrapped: first it is taken as if it held no blanks, which the letters themselves tell.
bool DecodeBinaryDataFromUTF8String(UTF8String const& text, Bytes& data) {
    if (DecodeLetters(text, data))
        return true;
    UTF8String const letters = WithoutBlanks(text);
    if (letters.size() != text.size() && DecodeLetters(letters, data))
        return true;
    data.clear();
    return false;
}

} // namespace vyncore::utility
