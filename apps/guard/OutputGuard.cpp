#include "guard/OutputGuard.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <span>

namespace vynguard {

namespace {

constexpr std::int32_t kLoudestBits = std::bit_cast<std::int32_t>(OutputGuard::kLoudest);
constexpr std::int32_t kMagnitude = 0x7FFFFFFF;
constexpr std::size_t kAtOnce = 32;

// Negative for what must not be heard. Bits of magnitudes are in the order of the magnitudes, infinity and then NaN
// behind them all; so this asks no floating-point mode, and compilers turn it into vectors.
std::int32_t GetRoom(float sample) {
    return kLoudestBits - (std::bit_cast<std::int32_t>(sample) & kMagnitude);
}

bool CanBeHeard(std::span<float const> samples) {
    std::int32_t room = 0;
    for (; samples.size() >= kAtOnce; samples = samples.subspan(kAtOnce)) {
        std::int32_t least = 0;
        for (std::size_t i = 0; i < kAtOnce; ++i)
            least |= GetRoom(samples[i]);
        room |= least;
    }
    for (float const sample : samples)
        room |= GetRoom(sample);
    return room >= 0;
}

void CountOne(std::atomic<std::int64_t>& count) {
    count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

} // namespace

OutputGuard::Scope::Scope(OutputGuard& guard) noexcept
    : mGuard(guard), mBefore(FloatingPointMode::Get()), mGiven(mBefore.MakeForAudio()) {
    mGiven.Set();
}

OutputGuard::Scope::~Scope() {
    if (!(FloatingPointMode::Get() == mGiven))
        CountOne(mGuard.mModeRestored);
    mBefore.Set();
}

void OutputGuard::Check(float* const* out, int channels, int samples, ChannelFlags& silent) noexcept {
    for (int channel = 0; channel < channels; ++channel) {
        if (silent.Test(static_cast<unsigned>(channel)) ||
            CanBeHeard({out[channel], static_cast<std::size_t>(samples)}))
            continue;
        Silence(out, channels, samples, silent);
        CountOne(mSilenced);
        return;
    }
}

void OutputGuard::Silence(float* const* out, int channels, int samples, ChannelFlags& silent) noexcept {
    for (int channel = 0; channel < channels; ++channel) {
        std::fill_n(out[channel], samples, 0.0f);
        silent.Set(static_cast<unsigned>(channel));
    }
}

OutputGuard::Report OutputGuard::GetReport() const noexcept {
    return {mSilenced.load(std::memory_order_relaxed), mModeRestored.load(std::memory_order_relaxed)};
}

} // namespace vynguard
