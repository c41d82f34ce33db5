#include "vynhost/PlaybackResampler.h"

#include <algorithm>
#include <new>
#include <samplerate.h>
#include <stdexcept>
#include <string>

namespace vynhost {

namespace {

constexpr std::size_t kStretch = 1 << 14;

} // namespace

void PlaybackResampler::Release::operator()(SRC_STATE_tag* state) const noexcept {
    src_delete(state);
}

bool PlaybackResampler::CanConvert(double ratio) noexcept {
    return src_is_valid_ratio(ratio) != 0;
}

PlaybackResampler::PlaybackResampler(double ratio, std::size_t length, std::vector<float>& result)
    : mRatio(ratio), mEnd(result.size() + length), mResult(&result), mStretch(kStretch) {
    int error = 0;
    mState.reset(src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error));
    if (!mState)
        throw std::bad_alloc();
    result.reserve(mEnd);
}

void PlaybackResampler::Add(std::span<float const> samples) {
    Convert(samples, false);
}

void PlaybackResampler::Finish() {
    // An address that can be read: the converter looks at it even when it is given no samples.
    float const none = 0.0f;
    Convert({&none, 0}, true);
    mResult->resize(mEnd, 0.0f);
}

void PlaybackResampler::Convert(std::span<float const> samples, bool isLast) {
    SRC_DATA data{};
    data.src_ratio = mRatio;
    data.end_of_input = isLast ? 1 : 0;
    data.data_out = mStretch.data();
    data.output_frames = static_cast<long>(kStretch);
    do {
        data.data_in = samples.data();
        data.input_frames = static_cast<long>(samples.size());
        if (int const error = src_process(mState.get(), &data); error != 0)
            throw std::runtime_error(std::string("the sample rate can't be converted: ") + src_strerror(error));
        samples = samples.subspan(static_cast<std::size_t>(data.input_frames_used));
        std::size_t const room = mEnd - std::min(mEnd, mResult->size());
        std::size_t const made = std::min(static_cast<std::size_t>(data.output_frames_gen), room);
        mResult->insert(mResult->end(), mStretch.data(), mStretch.data() + made);
    } while (!samples.empty() || data.output_frames_gen > 0);
}

} // namespace vynhost
