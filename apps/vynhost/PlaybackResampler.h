#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct SRC_STATE_tag;

namespace vynhost {

/// Converts one channel of audio to another sample rate, a stretch at a time, into a list of samples that belongs to
/// the caller and must outlive it. Audio stays in its place in time.
class PlaybackResampler {
public:
    /// Whether so great a step is possible at all.
    /// @param ratio  new rate over old rate
    /// [any-thread]
    static bool CanConvert(double ratio) noexcept;

    /// @param ratio   one that CanConvert takes
    /// @param length  of the whole result in samples
    /// @param result  is appended to
    /// Throws std::bad_alloc.
    /// [any-thread]
    PlaybackResampler(double ratio, std::size_t length, std::vector<float>& result);

    /// Takes the next samples of the source.
    /// [any-thread]
    void Add(std::span<float const> samples);

    /// Ends the source, and makes the result as long as it was announced.
    /// [any-thread]
    void Finish();

private:
    struct Release {
        void operator()(SRC_STATE_tag* state) const noexcept;
    };

    void Convert(std::span<float const> samples, bool isLast);

    std::unique_ptr<SRC_STATE_tag, Release> mState;
    double mRatio;
    std::size_t mEnd; ///< of the result
    std::vector<float>* mResult;
    std::vector<float> mStretch;
};

} // namespace vynhost
