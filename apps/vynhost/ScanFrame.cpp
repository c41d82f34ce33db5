#include "vynhost/ScanFrame.h"

namespace vynhost {

namespace {

constexpr std::size_t kLengthBytes = 4;
constexpr std::size_t kHeader = kLengthBytes + 1;

std::size_t ReadLength(std::string_view bytes) {
    std::size_t length = 0;
    for (std::size_t place = 0; place < kLengthBytes; ++place)
        length |= std::size_t{static_cast<unsigned char>(bytes[place])} << (8 * place);
    return length;
}

bool IsKind(unsigned char number) {
    return number >= static_cast<unsigned char>(ScanFrameKind::kReady) &&
           number <= static_cast<unsigned char>(ScanFrameKind::kDone);
}

} // namespace

std::string EncodeScanFrame(ScanFrameKind kind, std::string_view text) {
    text = text.substr(0, ScanFrameReader::kMostText);
    std::string bytes;
    bytes.reserve(kHeader + text.size());
    for (std::size_t place = 0; place < kLengthBytes; ++place)
        bytes += static_cast<char>((text.size() >> (8 * place)) & 0xFF);
    bytes += static_cast<char>(kind);
    return bytes.append(text);
}

void ScanFrameReader::Append(std::string_view bytes) {
    mBytes.erase(0, mTaken);
    mTaken = 0;
    mBytes.append(bytes);
}

std::optional<ScanFrame> ScanFrameReader::Next() {
    std::string_view const rest = std::string_view(mBytes).substr(mTaken);
    if (mBroken || rest.size() < kHeader)
        return std::nullopt;
    std::size_t const length = ReadLength(rest);
    auto const kind = static_cast<unsigned char>(rest[kLengthBytes]);
    mBroken = length > kMostText || !IsKind(kind);
    if (mBroken || rest.size() - kHeader < length)
        return std::nullopt;
    mTaken += kHeader + length;
    return ScanFrame{static_cast<ScanFrameKind>(kind), std::string(rest.substr(kHeader, length))};
}

} // namespace vynhost
