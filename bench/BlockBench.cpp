// What a block costs over the plug-in's own process call: one stereo block of 64 samples.
#include "BarePlugin.h"
#include "Comparison.h"

#include "support/FixtureModule.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <memory>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;

constexpr int kSamples = 64;

struct Stereo {
    std::array<float, kSamples> left{};
    std::array<float, kSamples> right{};
    std::array<float*, 2> pointers{left.data(), right.data()};
};

class Transport : public IAudioFilterHost {
public:
    bool GetPlaybackState(PlaybackState& state) override {
        state.mTempo = 90.0;
        state.mIsPlaying = true;
        return true;
    }
};

Stereo theIn;
Stereo theOut;
Transport theTransport;

void RunDirect(benchmark::State& state, vynbench::BarePlugin& plugin) {
    for (auto _ : state)
        benchmark::DoNotOptimize(plugin.Process());
}

void RunFilter(benchmark::State& state, vst3::VST3AudioFilter& filter, IAudioFilterHost* host) {
    filter.SetAudioFilterHost(host);
    AudioFilter& base = filter;
    ChannelFlags outFlags;
    for (auto _ : state) {
        base.ProcessWithMapping(theIn.pointers.data(), theOut.pointers.data(), kSamples, ChannelFlags(), outFlags);
        benchmark::DoNotOptimize(outFlags);
    }
}

/// The same fixture with and without the library around it.
struct Pair {
    Pair(FixtureModule& fixture, int parameters) {
        FixtureConfiguration configuration;
        configuration.parameterCount = parameters;
        configuration.nullDsp = true;
        configuration.logging = false;
        fixture.Configure(configuration);
        bare = std::make_unique<vynbench::BarePlugin>(fixture.GetPath());
        bare->SetBuffers(theIn.pointers.data(), theOut.pointers.data(), kSamples);
        auto const module = vst3::FindOrLoadVST3Module(FixturePath16("configurable.vst3"));
        filter = module->CreateVST3Filter(fixture.UniqueID());
        filter->SetBlockSize(kSamples);
        filter->SetSampleRate(48000.0f);
        filter->Resume();
    }

    void Register(std::string const& parameters) {
        benchmark::RegisterBenchmark(("direct/" + parameters).c_str(),
                                     [this](benchmark::State& state) { RunDirect(state, *bare); });
        benchmark::RegisterBenchmark(("filter/" + parameters).c_str(),
                                     [this](benchmark::State& state) { RunFilter(state, *filter, nullptr); });
        benchmark::RegisterBenchmark(("filter+transport/" + parameters).c_str(),
                                     [this](benchmark::State& state) { RunFilter(state, *filter, &theTransport); });
    }

    std::unique_ptr<vynbench::BarePlugin> bare;
    boost::intrusive_ptr<vst3::VST3AudioFilter> filter;
};

void ReadClock(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(vyncore::utility::HighPrecisionTime::GetCurrentTimeStamp());
}

bool Compare(vynbench::Medians const& medians) {
    bool kept = true;
    for (std::string const parameters : {"10", "50000"}) {
        double const direct = medians["direct/" + parameters];
        double const plain = medians["filter/" + parameters];
        double const transport = medians["filter+transport/" + parameters];
        std::printf("%s parameters: direct %.1f ns, filter %.1f ns (%.2f times)\n", parameters.c_str(), direct, plain,
                    plain / direct);
        kept &= vynbench::Report("  filter over the direct call", plain - direct, 45.0, "ns");
        kept &= vynbench::Report("  transport over none, less one reading of the clock",
                                 transport - plain - medians["clock"], 15.0, "ns");
    }
    return kept;
}

} // namespace

int main(int argc, char** argv) {
    Initialize(true);
    bool kept = false;
    {
        FixtureModule fixture("configurable.vst3");
        Pair few(fixture, 10);
        Pair many(fixture, 50000);
        few.Register("10");
        many.Register("50000");
        benchmark::RegisterBenchmark("clock", ReadClock);
        kept = Compare(vynbench::RunInterleaved(argc, argv));
        few.filter->Suspend();
        many.filter->Suspend();
    }
    Terminate();
    return kept ? 0 : 1;
}
