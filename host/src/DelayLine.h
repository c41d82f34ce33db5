#pragma once

#include "vynaccelerate/AlignedBuffer.h"
#include "vynaccelerate/Buffers.h"
#include "vyncore/Export.h"
#include "vyncore/utility/RefCountedObject.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vynaudiofilterhost {

/// Delays several channels of audio by a fixed number of samples: block in, block out, for audio that goes around
/// something with a latency. All channels lie in one block of aligned storage; a reader gets one piece per channel,
/// wherever it lies. It is held through boost::intrusive_ptr and never throws.
///
/// Life: made for a block size, a delay and a number of channels. There may be no memory for it; then it is not ready,
/// takes nothing and gives nothing. SetDelay and SetBufferSize start anew with silence. A line in use is replaced, not
/// changed.
///
/// Invariants:
/// 1. Between two blocks at least the last samples of each channel are kept, as many as the delay.
/// 2. A delay that is short beside a block lies on a strip: when a block doesn't fit behind the one before, the last
///    samples are carried to the front. A longer one lies in a ring of several blocks, behind which there is room for a
///    block that runs over its end. So little is copied twice, whatever the delay.
class VYN_API DelayLine : public vyncore::utility::RefCountedObject {
public:
    /// No channels, no delay, not ready.
    /// [any-thread]
    DelayLine() noexcept = default;

    /// @param bufferSize   the largest block, in samples
    /// @param delay        in samples
    /// @param numChannels  may be 0
    /// [any-thread]
    DelayLine(unsigned int bufferSize, unsigned int delay, unsigned int numChannels) noexcept;
    DelayLine(DelayLine const&) = delete;
    DelayLine& operator=(DelayLine const&) = delete;
    ~DelayLine() override;

    /// Sets the delay in samples, also to the same, and loses what was written. Gives whether the line is ready.
    /// [main-thread & suspended]
    bool SetDelay(unsigned int delay) noexcept;

    /// In samples.
    /// [any-thread]
    unsigned int GetDelay() const noexcept { return mDelay; }

    /// Sets the largest block in samples. On a ready line that has this size already nothing changes; otherwise what
    /// was written is lost. Gives whether the line is ready.
    /// [main-thread & suspended]
    bool SetBufferSize(unsigned int bufferSize) noexcept;

    /// Takes a block: in[channel][sample], all channels. A block that is longer than the buffer size is dropped.
    /// [process-thread]
    void WriteData(float* const* in, unsigned int numSamples) noexcept;

    /// The block that was just written, as it was so many samples earlier as the delay is; silence before the first.
    /// The result is [channel][sample] and holds until the next call.
    /// @param numSamples  as for the WriteData before
    /// Null when the line is not ready or the block is longer than the buffer size.
    /// [process-thread]
    float** GetDelayedOutput(unsigned int numSamples) noexcept;

    /// In place of the two, for a block that is at least as long as the delay, when its caller still has it: keeps the
    /// last samples of the block, as many as the delay, and gives those kept before. They and the block without its end
    /// are what GetDelayedOutput would give, with no more copied than the delay.
    /// The result is [channel][sample], holds until the next call, and is null when this is not possible; then nothing
    /// has been done. Blocks may go this way and the other in turn.
    /// [process-thread]
    float** ExchangeTail(float* const* in, unsigned int numSamples) noexcept;

    /// Cleared, the line starts anew with silence; otherwise what was written before still comes out.
    /// [main-thread & suspended]
    void Reset(bool clear) noexcept;

private:
    bool AllocateAudioBuffer() noexcept;
    void DeleteAudioBuffer() noexcept;
    bool IsStrip() const noexcept { return mRingSize == 0; }
    float** PointOutputAt(std::size_t start) noexcept;
    void CopyIn(float* const* in, std::size_t offset, std::size_t position, std::size_t numSamples) noexcept;
    void WriteOverEnd(float* const* in, std::size_t numSamples) noexcept;
    void CarryToFront() noexcept;
    void CompleteBehindRing(std::size_t numSamples) noexcept;

    std::uint32_t mDelay = 0;
    std::uint32_t mBufferSize = 0;
    std::uint32_t mChannels = 0;
    bool mReady = false;
    std::size_t mWritePosition = 0; ///< in samples from the start of a channel's storage
    std::size_t mFront = 0;         ///< of a strip: where the first block goes
    std::size_t mRingSize = 0;      ///< delay + buffer size at least; 0 for a strip
    std::size_t mEnd = 0;           ///< of the ring, or of the strip
    std::size_t mStride = 0;        ///< of a channel
    vynaccelerate::AlignedBuffer mStorage;
    std::unique_ptr<float*[]> mOutputPointers;
};

inline void DelayLine::CopyIn(float* const* in, std::size_t offset, std::size_t position,
                              std::size_t numSamples) noexcept {
    float* kept = mStorage.Data() + position;
    std::size_t const stride = mStride;
    for (float* const* const end = in + mChannels; in != end; ++in, kept += stride)
        vynaccelerate::utility::Copy(numSamples, *in + offset, kept);
}

inline void DelayLine::WriteData(float* const* in, unsigned int numSamples) noexcept {
    if (!mReady || numSamples > mBufferSize)
        return;
    std::size_t const position = mWritePosition;
    if (position + numSamples > mEnd)
        return WriteOverEnd(in, numSamples);
    mWritePosition = position + numSamples;
    CopyIn(in, 0, position, numSamples);
}

inline float** DelayLine::GetDelayedOutput(unsigned int numSamples) noexcept {
    if (!mReady || numSamples > mBufferSize)
        return nullptr;
    std::size_t const back = std::size_t{mDelay} + numSamples;
    std::size_t start = mWritePosition - back;
    if (back > mWritePosition) // on a strip only for more samples than were written
        start = IsStrip() ? 0 : mWritePosition + mRingSize - back;
    if (!IsStrip() && start + numSamples > mRingSize)
        CompleteBehindRing(start + numSamples - mRingSize);
    return PointOutputAt(start);
}

inline float** DelayLine::ExchangeTail(float* const* in, unsigned int numSamples) noexcept {
    std::size_t const delay = mDelay;
    std::size_t const position = mWritePosition;
    if (!mReady || numSamples > mBufferSize || numSamples < delay || position < delay)
        return nullptr;
    // At the front, or behind what was kept there: there is room for more than three delays, and two are soon in reach.
    std::size_t const place = position >= mFront + 2 * delay ? mFront : position;
    CopyIn(in, numSamples - delay, place, delay);
    mWritePosition = place + delay;
    return PointOutputAt(position - delay);
}

inline float** DelayLine::PointOutputAt(std::size_t start) noexcept {
    float* delayed = mStorage.Data() + start;
    float** const output = mOutputPointers.get();
    std::size_t const stride = mStride;
    for (std::size_t channel = 0, count = mChannels; channel < count; ++channel, delayed += stride)
        output[channel] = delayed;
    return output;
}

} // namespace vynaudiofilterhost
