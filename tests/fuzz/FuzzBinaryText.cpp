#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vyncore/utility/BinaryText.h"

#include <algorithm>

namespace vynfuzz {

using namespace vyncore::utility;
using vyncore::UTF8String;

void FuzzBinaryText(std::uint8_t const* data, std::size_t size) {
    UTF8String text(data, data + size);
    std::vector<unsigned char, vyncore::allocator::STLAllocator<unsigned char>> bytes;
    if (!DecodeBinaryDataFromUTF8String(text, bytes)) {
        Require(bytes.empty(), "a failure leaves nothing");
        return;
    }
    UTF8String again;
    Require(EncodeBinaryDataToUTF8String(bytes.data(), bytes.size(), again), "what was read can be written");
    std::erase_if(text,
                  [](char letter) { return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n'; });
    Require(again == text, "each content has one text, blanks aside");
}

} // namespace vynfuzz
