// What OutputGuard costs a stereo block of 512 samples, beside the same block without it.
#include "Comparison.h"

#include "guard/OutputGuard.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

namespace {

using vynaudiofilterhost::ChannelFlags;
using vynguard::OutputGuard;

constexpr int kSamples = 512;

using Channel = std::array<float, kSamples>;

std::array<Channel, 2> theSound;
std::array<Channel, 2> theOut;
std::array<float*, 2> theChannels{theOut[0].data(), theOut[1].data()};

void Render() {
    theOut = theSound;
    benchmark::ClobberMemory();
}

void RunPlain(benchmark::State& state) {
    for (auto _ : state)
        Render();
}

void RunGuarded(benchmark::State& state, unsigned silentChannels) {
    OutputGuard guard;
    for (auto _ : state) {
        ChannelFlags silent(silentChannels);
        guard.Run(theChannels.data(), 2, kSamples, silent, Render);
        benchmark::DoNotOptimize(silent);
    }
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t i = 0; i < kSamples; ++i)
        theSound[0][i] = theSound[1][i] = std::sin(0.1f * static_cast<float>(i));
    benchmark::RegisterBenchmark("plain", RunPlain);
    benchmark::RegisterBenchmark("guarded", RunGuarded, 0u);
    benchmark::RegisterBenchmark("guarded, flagged silent", RunGuarded, 3u);
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    bool kept = vynbench::Report("guard over none, stereo block of 512 samples", medians["guarded"] - medians["plain"],
                                 400.0, "ns");
    kept &= vynbench::Report("guard over none, both channels flagged silent",
                             medians["guarded, flagged silent"] - medians["plain"], 50.0, "ns");
    return kept ? 0 : 1;
}
