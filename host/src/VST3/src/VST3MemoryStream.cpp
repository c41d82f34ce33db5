#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <limits>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::int64;
using Steinberg::tresult;

namespace {

int64 AddSaturated(int64 left, int64 right) {
    using Limits = std::numeric_limits<int64>;
    if (right > 0 && left > Limits::max() - right)
        return Limits::max();
    if (right < 0 && left < Limits::min() - right)
        return Limits::min();
    return left + right;
}

void Report(int32* target, int32 count) {
    if (target)
        *target = count;
}

} // namespace

tresult PLUGIN_API VST3MemoryStream::read(void* buffer, int32 numBytes, int32* numBytesRead) {
    Report(numBytesRead, 0);
    if (!buffer && numBytes > 0)
        return Steinberg::kInvalidArgument;
    auto const size = static_cast<int64>(GetSize());
    if (mCursor >= size)
        mCursor = size;
    if (mCursor < 0 || mCursor == size || numBytes <= 0)
        return Steinberg::kResultOk;
    int64 const count = std::min<int64>(numBytes, size - mCursor);
    std::memcpy(buffer, GetData() + mCursor, static_cast<std::size_t>(count));
    mCursor += count;
    Report(numBytesRead, static_cast<int32>(count));
    return Steinberg::kResultOk;
}

tresult PLUGIN_API VST3MemoryStream::write(void* buffer, int32 numBytes, int32* numBytesWritten) {
    Report(numBytesWritten, 0);
    if (!buffer)
        return Steinberg::kInvalidArgument;
    if (numBytes < 1)
        return Steinberg::kResultOk;
    if (mCursor < 0)
        return Steinberg::kResultFalse;
    auto const* const bytes = static_cast<unsigned char const*>(buffer);
    int64 const end = AddSaturated(mCursor, numBytes);
    // The gap is filled, and what stood behind the cursor goes; the bytes themselves are written once.
    if (!Grow(static_cast<std::size_t>(end)) || !SetSize(static_cast<std::size_t>(mCursor))) {
        mOverflowed = true;
        return Steinberg::kOutOfMemory;
    }
    mBytes.insert(mBytes.end(), bytes, bytes + numBytes);
    mCursor = end;
    Report(numBytesWritten, numBytes);
    return Steinberg::kResultOk;
}

tresult PLUGIN_API VST3MemoryStream::seek(int64 pos, int32 mode, int64* result) {
    if (mode == kIBSeekSet)
        mCursor = pos;
    else if (mode == kIBSeekCur)
        mCursor = AddSaturated(mCursor, pos);
    else if (mode == kIBSeekEnd)
        mCursor = AddSaturated(static_cast<int64>(GetSize()), pos);
    if (result)
        *result = mCursor;
    return Steinberg::kResultOk;
}

tresult PLUGIN_API VST3MemoryStream::tell(int64* pos) {
    if (!pos)
        return Steinberg::kInvalidArgument;
    *pos = mCursor;
    return Steinberg::kResultOk;
}

VST3MemoryStream::Bytes VST3MemoryStream::TakeBytes() noexcept {
    mHead = 0;
    mCursor = 0;
    return std::move(mBytes);
}

bool VST3MemoryStream::SetSize(std::size_t size) {
    if (!Grow(size))
        return false;
    mBytes.resize(mHead + size);
    return true;
}

// Plug-ins write their state number by number.
bool VST3MemoryStream::Grow(std::size_t size) {
    if (size > kMaxSize)
        return false;
    return mHead + size <= mBytes.capacity() || Reserve(std::min(2 * size, kMaxSize)) || Reserve(size);
}

bool VST3MemoryStream::Reserve(std::size_t size) {
    if (size > kMaxSize)
        return false;
    try {
        mBytes.reserve(mHead + size);
    } catch (std::exception const&) {
        return false;
    }
    return true;
}

} // namespace vynaudiofilterhost::vst3
