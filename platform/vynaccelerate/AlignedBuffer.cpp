#include "vynaccelerate/AlignedBuffer.h"

#include <utility>

namespace vynaccelerate {

AlignedBuffer::AlignedBuffer(std::size_t count) noexcept : mBuffer(utility::Malloc_Float(count)) {
    if (mBuffer)
        mSize = count;
    Zero();
}

AlignedBuffer::AlignedBuffer(AlignedBuffer&& other) noexcept
    : mBuffer(std::move(other.mBuffer)), mSize(std::exchange(other.mSize, 0)) {}

AlignedBuffer& AlignedBuffer::operator=(AlignedBuffer&& other) noexcept {
    mBuffer = std::move(other.mBuffer);
    mSize = std::exchange(other.mSize, 0);
    return *this;
}

} // namespace vynaccelerate
