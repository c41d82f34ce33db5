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
    if (!buffer)
        return Steinberg::kInvalidArgument;
    auto const size = static_cast<int64>(mBytes.size());
    if (mCursor >= size)
        mCursor = size;
    if (mCursor < 0 || mCursor == size || numBytes <= 0)
        return Steinberg::kResultOk;
    int64 const count = std::min<int64>(numBytes, size - mCursor);
    std::memcpy(buffer, mBytes.data() + mCursor, static_cast<std::size_t>(count));
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
    int64 const end = AddSaturated(mCursor, numBytes);
    if (!SetSize(static_cast<std::size_t>(end)))
        return Steinberg::kOutOfMemory;
    std::memcpy(mBytes.data() + mCursor, buffer, static_cast<std::size_t>(numBytes));
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
        mCursor = AddSaturated(static_cast<int64>(mBytes.size()), pos);
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

bool VST3MemoryStream::SetSize(std::size_t size) {
    if (size > kMaxSize)
        return false;
    try {
        // Plug-ins write their state number by number.
        if (size > mBytes.capacity())
            mBytes.reserve(std::min(2 * size, kMaxSize));
        mBytes.resize(size);
    } catch (std::exception const&) {
        return false;
    }
    return true;
}

} // namespace vynaudiofilterhost::vst3
