// What a block costs over the effect's own processReplacing: one stereo block of 16, 64 and 1,024 samples; and a
// question for the time from within the audio.
#include "Comparison.h"

#include "vynaudiofilterhost/IAudioFilterHost.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vynaudiofilterhost/VST/src/StaticAudioMasterCallback.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <deque>
#include <string>

namespace {

using namespace vynaudiofilterhost;
using namespace vynaudiofilterhost::vst;

constexpr int kMostSamples = 1024;
constexpr int kOtherEffects = 10000;

struct Stereo {
    std::array<float, kMostSamples> left{};
    std::array<float, kMostSamples> right{};
    std::array<float*, 2> pointers{left.data(), right.data()};
};

Stereo theIn;
Stereo theOut;

/// A stereo effect whose audio call does next to nothing.
struct QuietEffect : AEffect {
    QuietEffect() : AEffect{} {
        magic = kEffectMagic;
        dispatcher = [](AEffect*, std::int32_t, std::int32_t, std::intptr_t, void*, float) { return std::intptr_t{0}; };
        numInputs = numOutputs = 2;
        flags = effFlagsCanReplacing;
        processReplacing = [](AEffect*, float** in, float** out, std::int32_t) {
            benchmark::DoNotOptimize(out[0][0] = in[0][0]);
        };
    }
};

class Transport : public IAudioFilterHost {
public:
    bool GetPlaybackState(PlaybackState& state) override {
        state.mTempo = 90.0;
        return true;
    }
};

Transport theTransport;

void RunDirect(benchmark::State& state, AEffect* effect, int samples) {
    benchmark::DoNotOptimize(effect);
    for (auto _ : state)
        effect->processReplacing(effect, theIn.pointers.data(), theOut.pointers.data(), samples);
}

void RunFilter(benchmark::State& state, AudioFilter& filter, int samples) {
    ChannelFlags outFlags;
    for (auto _ : state) {
        filter.ProcessWithMapping(theIn.pointers.data(), theOut.pointers.data(), samples, ChannelFlags(), outFlags);
        benchmark::DoNotOptimize(outFlags);
    }
}

void AskTime(benchmark::State& state, AEffect* effect) {
    for (auto _ : state)
        benchmark::DoNotOptimize(StaticAudioMasterCallback(effect, audioMasterGetTime, 0, 0, nullptr, 0.0f));
}

bool Compare(vynbench::Medians const& medians) {
    bool kept = true;
    for (std::string const samples : {"16", "64", "1024"}) {
        double const direct = medians["direct/" + samples];
        double const filter = medians["filter/" + samples];
        std::printf("%s samples: direct %.1f ns, filter %.1f ns\n", samples.c_str(), direct, filter);
        kept &= vynbench::Report("  filter over the direct call", filter - direct, 30.0, "ns");
    }
    std::printf("a question for the time: %.1f ns, with %d effects more %.1f ns\n", medians["time/1"], kOtherEffects,
                medians["time/many"]);
    return vynbench::Report("  among many over alone", medians["time/many"] / medians["time/1"], 1.5, "times") && kept;
}

vynbench::Medians Measure(int argc, char** argv) {
    QuietEffect effect;
    boost::intrusive_ptr<AudioFilter> const filter(new VSTAudioFilter(u"2:1 quiet", u"/quiet.so", &effect, true));
    filter->SetAudioFilterHost(&theTransport);
    filter->SetSampleRate(48000.0f);
    filter->SetBlockSize(kMostSamples);
    filter->Resume();
    for (int const samples : {16, 64, 1024}) {
        std::string const name = std::to_string(samples);
        benchmark::RegisterBenchmark(("direct/" + name).c_str(),
                                     [&effect, samples](auto& state) { RunDirect(state, &effect, samples); });
        benchmark::RegisterBenchmark(("filter/" + name).c_str(),
                                     [&filter, samples](auto& state) { RunFilter(state, *filter, samples); });
    }
    benchmark::RegisterBenchmark("time/1", [&effect](auto& state) { AskTime(state, &effect); });
    std::deque<QuietEffect> others;
    benchmark::RegisterBenchmark("time/many", [&](auto& state) {
        for (int number = 0; number < kOtherEffects; ++number)
            EffectRegistry::Add(&others.emplace_back(), [](auto...) { return 0; });
        AskTime(state, &effect);
        for (QuietEffect& other : others)
            EffectRegistry::Remove(&other);
        others.clear();
    });
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    filter->Suspend();
    return medians;
}

} // namespace

int main(int argc, char** argv) {
    Initialize(true);
    bool const kept = Compare(Measure(argc, argv));
    Terminate();
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
