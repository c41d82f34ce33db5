#pragma once

#include "vynaccelerate/Buffers.h"
#include "vyncore/Export.h"

#include <cstddef>
#include <memory>

namespace vynaccelerate {

/// The owner of a float buffer of vynaccelerate::utility. It moves and doesn't copy. It never throws: a buffer that
/// could not be had is an empty one, which the owner tests.
class VYN_API AlignedBuffer {
public:
    /// An empty buffer.
    /// [any-thread]
    AlignedBuffer() noexcept = default;

    /// A buffer of so many samples, all 0. Empty when there is no memory for it.
    /// [any-thread]
    explicit AlignedBuffer(std::size_t count) noexcept;

    /// [any-thread]
    AlignedBuffer(AlignedBuffer&& other) noexcept;

    /// [any-thread]
    AlignedBuffer& operator=(AlignedBuffer&& other) noexcept;

    /// The first sample; null for an empty buffer. Aligned to 64 bytes.
    /// [process-thread | any-thread]
    float* Data() noexcept { return mBuffer.get(); }

    /// [process-thread | any-thread]
    float const* Data() const noexcept { return mBuffer.get(); }

    /// In samples.
    /// [process-thread | any-thread]
    std::size_t Size() const noexcept { return mSize; }

    /// Sets every sample to 0.
    /// [process-thread | any-thread]
    void Zero() noexcept { utility::Zero(mSize, mBuffer.get()); }

private:
    struct Release {
        void operator()(float* buffer) const noexcept { utility::Free(buffer); }
    };

    std::unique_ptr<float, Release> mBuffer;
    std::size_t mSize = 0;
};

} // namespace vynaccelerate
