// What it costs to list and read 50,000 parameters, over the plug-in's own time for the same calls, and what a tick of
// the main thread costs when some of them changed.
#include "BarePlugin.h"
#include "Comparison.h"

#include "support/FixtureModule.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using FilterPointer = boost::intrusive_ptr<vst3::VST3AudioFilter>;

constexpr int kMany = 50000;
constexpr char const* kModule = "configurable.vst3";

FixtureConfiguration Configuration(int parameters) {
    FixtureConfiguration configuration;
    configuration.parameterCount = parameters;
    configuration.logging = false;
    return configuration;
}

FilterPointer MakeFilter(FixtureModule const& fixture) {
    return vst3::FindOrLoadVST3Module(FixturePath16(kModule))->CreateVST3Filter(fixture.UniqueID());
}

// Made, every parameter listed and its value read.
void ListBare(benchmark::State& state) {
    for (auto _ : state) {
        vynbench::BarePlugin const plugin(FixturePath(kModule));
        for (int index = 0; index < kMany; ++index)
            benchmark::DoNotOptimize(plugin.GetController().getParamNormalized(static_cast<unsigned>(index)));
    }
}

void ListFilter(benchmark::State& state, FixtureModule const& fixture) {
    for (auto _ : state) {
        FilterPointer const filter = MakeFilter(fixture);
        for (int index = 0; index < filter->GetParameterCount(); ++index)
            benchmark::DoNotOptimize(filter->GetParameter(index));
    }
}

// Everything that a list of parameters shows, of a plug-in that is there.
void ShowBare(benchmark::State& state) {
    vynbench::BarePlugin const plugin(FixturePath(kModule));
    auto& controller = plugin.GetController();
    for (auto _ : state) {
        for (int index = 0; index < kMany; ++index) {
            auto const id = static_cast<unsigned>(index);
            Steinberg::Vst::ParameterInfo info{};
            controller.getParameterInfo(index, info);
            double const value = controller.getParamNormalized(id);
            Steinberg::Vst::String128 text{};
            controller.getParamStringByValue(id, value, text);
            benchmark::DoNotOptimize(controller.normalizedParamToPlain(id, value));
            benchmark::DoNotOptimize(controller.normalizedParamToPlain(id, 0.0));
            benchmark::DoNotOptimize(controller.normalizedParamToPlain(id, 1.0));
            benchmark::DoNotOptimize(info);
        }
    }
}

void ShowFilter(benchmark::State& state, FixtureModule const& fixture) {
    FilterPointer const filter = MakeFilter(fixture);
    for (auto _ : state) {
        for (int index = 0; index < filter->GetParameterCount(); ++index) {
            auto const info = filter->GetParameterInfo(index);
            float const value = filter->GetParameter(index);
            benchmark::DoNotOptimize(info->GetName());
            benchmark::DoNotOptimize(info->GetLabel());
            benchmark::DoNotOptimize(info->GetParameterString(value));
            benchmark::DoNotOptimize(info->FromNormalized(value));
            benchmark::DoNotOptimize(info->GetLoBound());
            benchmark::DoNotOptimize(info->GetHiBound());
        }
    }
}

// An editor that opens has the filter tick at once. The plug-in reports one value in each block.
void Tick(benchmark::State& state, int parameters) {
    FixtureConfiguration configuration = Configuration(parameters);
    configuration.outputPointCount = 1;
    FixtureModule const fixture(kModule, configuration);
    FilterPointer const filter = MakeFilter(fixture);
    filter->SetBlockSize(16);
    filter->Resume();
    filter->EditorDetached();
    float samples[16] = {};
    float* channels[] = {samples, samples};
    ChannelFlags outFlags;
    for (auto _ : state) {
        filter->ProcessWithMapping(channels, channels, 16, ChannelFlags(), outFlags);
        filter->EditorAttached();
        filter->EditorDetached();
    }
    filter->Suspend();
}

} // namespace

int main(int argc, char** argv) {
    Initialize(true);
    bool kept = true;
    {
        FixtureModule const fixture(kModule, Configuration(kMany));
        benchmark::RegisterBenchmark("list bare", ListBare);
        benchmark::RegisterBenchmark("list filter", [&](auto& state) { ListFilter(state, fixture); });
        benchmark::RegisterBenchmark("show bare", ShowBare);
        benchmark::RegisterBenchmark("show filter", [&](auto& state) { ShowFilter(state, fixture); });
        vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
        kept &= vynbench::Report("50,000 parameters made, listed and read over the bare calls",
                                 medians["list filter"] / medians["list bare"], 1.5, "times");
        kept &= vynbench::Report("50,000 parameters shown over the bare calls",
                                 medians["show filter"] / medians["show bare"], 1.5, "times");
    }
    benchmark::ClearRegisteredBenchmarks();
    benchmark::RegisterBenchmark("tick of 10", [](auto& state) { Tick(state, 10); });
    benchmark::RegisterBenchmark("tick of 50000", [](auto& state) { Tick(state, kMany); });
    vynbench::Medians const ticks = vynbench::RunInterleaved(argc, argv);
    kept &= vynbench::Report("block and tick with one change, of 50,000 over of 10",
                             ticks["tick of 50000"] / ticks["tick of 10"], 1.5, "times");
    Terminate();
    return kept ? 0 : 1;
}
