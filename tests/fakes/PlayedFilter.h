#pragma once

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace vyntest {

/// A filter with a gain for its only parameter, that keeps what it is sent and can be told to misbehave. It allocates
/// nothing while it processes.
class PlayedFilter : public vynaudiofilterhost::AudioFilter {
public:
    struct Event {
        std::int64_t sample; ///< of all that was processed since the filter was made
        unsigned char status, data1;
        bool operator==(Event const&) const = default;
    };

    PlayedFilter(int inputs, int outputs) : AudioFilter(u"played", u"Played") {
        if (inputs > 0)
            AddInputBus({u"In", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(inputs)), {}});
        AddOutputBus({u"Out", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(outputs)), {}});
        mInputs = inputs;
        mOutputs = outputs;
    }

    void Resume() override {
        if (throwsAtResume)
            throw std::runtime_error("does not resume");
        ++starts;
        mLatency = 0;
        AudioFilter::Resume();
    }

    void Process(float** in, float** out, int numSamples, vynaudiofilterhost::ChannelFlags,
                 vynaudiofilterhost::ChannelFlags&) override {
        vynaudiofilterhost::PlaybackState state;
        if (GetAudioFilterHost()->GetPlaybackState(state))
            transport = state.mSamplePosition;
        mLatency = lateLatency.load();
        longestBlock = std::max(longestBlock.load(), numSamples);
        processed += numSamples;
        if (throwsAtProcess)
            throw 1;
        for (int channel = 0; channel < mOutputs; ++channel) {
            for (int i = 0; i < numSamples; ++i)
                out[channel][i] = mInputs > 0 ? gain * in[channel % mInputs][i] : gain.load();
        }
        if (spoiledSample >= 0 && spoiledSample < numSamples)
            out[0][spoiledSample] = spoil;
    }

    void ScheduleMIDIEvent(bool, unsigned int offset, unsigned char status, unsigned char data1,
                           unsigned char) override {
        if (eventCount < events.size())
            events[eventCount++] = {processed + offset, status, data1};
    }

    int GetInitialDelay() const override { return mLatency; }
    bool IsMusicDevice() const override { return mInputs == 0; }
    int GetParameterCount() const override { return 1; }
    void SetParameter(int, float value) override { gain = value; }

    std::atomic<float> gain = 1.0f;
    std::atomic<int> longestBlock = 0;
    std::atomic<int> lateLatency = 0; ///< from the first block after Resume on
    std::atomic<std::int64_t> transport = -1;
    std::int64_t processed = 0;
    std::array<Event, 4096> events{};
    std::size_t eventCount = 0;
    int starts = 0;
    int spoiledSample = -1;
    float spoil = std::numeric_limits<float>::quiet_NaN();
    bool throwsAtResume = false;
    bool throwsAtProcess = false;

private:
    int mInputs = 0;
    int mOutputs = 0;
    std::atomic<int> mLatency = 0;
};

} // namespace vyntest
