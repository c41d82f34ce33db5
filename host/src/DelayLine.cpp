#include "vynaudiofilterhost/DelayLine.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace vynaudiofilterhost {

namespace {

constexpr std::size_t kSamplesPerLine = 16; // of the cache

// What is copied twice, as a part of what is copied anyway: on a strip delay / room / 2, at the end of a ring on
// average block / ring / 4. A strip takes the least memory, which is what counts for long blocks; for short ones it is
// the number of copies.
constexpr std::size_t kRoomOverStripDelay = 8;
constexpr std::size_t kLeastBlocksInRing = 4;
constexpr std::size_t kLeastRoomOnStrip = 512;

constexpr std::size_t RoundUp(std::size_t samples) {
    return (samples + kSamplesPerLine - 1) / kSamplesPerLine * kSamplesPerLine;
}

} // namespace

DelayLine::DelayLine(unsigned int bufferSize, unsigned int delay, unsigned int numChannels) noexcept
    : mDelay(delay), mBufferSize(bufferSize), mChannels(numChannels) {
    AllocateAudioBuffer();
}

DelayLine::~DelayLine() = default;

bool DelayLine::SetDelay(unsigned int delay) noexcept {
    mDelay = delay;
    return AllocateAudioBuffer();
}

bool DelayLine::SetBufferSize(unsigned int bufferSize) noexcept {
    if (mReady && bufferSize == mBufferSize)
        return true;
    mBufferSize = bufferSize;
    return AllocateAudioBuffer();
}

void DelayLine::DeleteAudioBuffer() noexcept {
    mReady = false;
    mStorage = vynaccelerate::AlignedBuffer();
    mOutputPointers.reset();
}

bool DelayLine::AllocateAudioBuffer() noexcept {
    DeleteAudioBuffer();
    std::size_t const delay = mDelay;
    std::size_t const block = mBufferSize;
    std::size_t const room = std::max(block, kLeastRoomOnStrip);
    bool const strip = delay <= room / kRoomOverStripDelay;
    mFront = strip ? RoundUp(delay) : 0;
    mRingSize = strip ? 0 : std::max(delay + block, kLeastBlocksInRing * block);
    mStride = RoundUp(strip ? mFront + room : mRingSize + block);
    mEnd = strip ? mStride : mRingSize;
    mWritePosition = mFront;
    if (mStride > std::numeric_limits<std::uint32_t>::max())
        return false;
    if (mChannels > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(float) / mStride)
        return false;
    mStorage = vynaccelerate::AlignedBuffer(mChannels * mStride);
    if (!mStorage.Data())
        return false;
    // Even without channels the output is an array.
    mOutputPointers.reset(new (std::nothrow) float* [std::max<std::size_t>(mChannels, 1)] {});
    if (!mOutputPointers)
        DeleteAudioBuffer();
    return mReady = mOutputPointers != nullptr;
}

void DelayLine::WriteOverEnd(float* const* in, std::size_t numSamples) noexcept {
    if (IsStrip()) {
        if (mDelay > 0)
            CarryToFront();
        CopyIn(in, 0, mFront, numSamples);
        mWritePosition = mFront + numSamples;
        return;
    }
    std::size_t const fitting = mRingSize - mWritePosition;
    CopyIn(in, 0, mWritePosition, fitting);
    mWritePosition = numSamples - fitting;
    CopyIn(in, fitting, 0, mWritePosition);
}

void DelayLine::CarryToFront() noexcept {
    float* samples = mStorage.Data();
    for (std::size_t channel = 0; channel < mChannels; ++channel, samples += mStride)
        std::memmove(samples + mFront - mDelay, samples + mWritePosition - mDelay, mDelay * sizeof(float));
}

void DelayLine::CompleteBehindRing(std::size_t numSamples) noexcept {
    float* samples = mStorage.Data();
    for (std::size_t channel = 0; channel < mChannels; ++channel, samples += mStride)
        vynaccelerate::utility::Copy(numSamples, samples, samples + mRingSize);
}

void DelayLine::Reset(bool clear) noexcept {
    if (clear)
        mStorage.Zero();
}

} // namespace vynaudiofilterhost
