#pragma once

#include "plugins/FixtureInterfaces.h"

#include "pluginterfaces/base/ibstream.h"

#include <cstring>

namespace vynfixtures {

/// How many bytes of a state are read or written at once; a multiple of what a blob keeps.
inline constexpr int32 kStatePiece = 1 << 14;

/// Reads what is left of the stream; its size and first bytes come back.
inline FixtureBlob ReadBlob(IBStream& stream) {
    FixtureBlob blob;
    unsigned char bytes[kStatePiece];
    int32 got = 0;
    while (stream.read(bytes, sizeof bytes, &got) == kResultOk && got > 0) {
        int32 const room = std::max(0, int32{sizeof blob.bytes} - blob.size);
        std::copy_n(bytes, std::min(got, room), blob.bytes + std::min(blob.size, int32{sizeof blob.bytes}));
        blob.size += got;
    }
    return blob;
}

/// Writes all bytes of the blob; gives its size.
inline int WriteBlob(IBStream& stream, FixtureBlob blob) {
    unsigned char piece[kStatePiece];
    for (int32 place = 0; place < std::min(blob.size, kStatePiece); ++place)
        piece[place] = blob.bytes[place % int32{sizeof blob.bytes}];
    for (int32 left = blob.size; left > 0; left -= kStatePiece)
        stream.write(piece, std::min(left, kStatePiece), nullptr);
    return blob.size;
}

/// The component's state when it holds the gain, and back; a blob of another size gives the gain `otherwise`.
inline FixtureBlob BlobOfGain(double gain) {
    FixtureBlob blob{.size = sizeof gain};
    std::memcpy(blob.bytes, &gain, sizeof gain);
    return blob;
}

inline double GainOfBlob(FixtureBlob const& blob, double otherwise) {
    if (blob.size == int{sizeof otherwise})
        std::memcpy(&otherwise, blob.bytes, sizeof otherwise);
    return otherwise;
}

} // namespace vynfixtures
