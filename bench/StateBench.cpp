// What it costs to save and load a state of 10 MiB, over the plug-in's own time, in copies of as many bytes.
#include "Comparison.h"

#include "support/FixtureModule.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/utility/BinaryText.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using vyncore::proplist::PropList;
using Bytes = PresetData::Bytes;

constexpr int kSize = 10 << 20;
constexpr char const* kModule = "configurable.vst3";

FixtureConfiguration Configuration(int stateSize) {
    FixtureConfiguration configuration;
    configuration.logging = false;
    configuration.stateHoldsGain = false;
    configuration.componentState.size = stateSize;
    for (unsigned place = 0; place < sizeof configuration.componentState.bytes; ++place)
        configuration.componentState.bytes[place] = static_cast<unsigned char>(37 * place);
    return configuration;
}

// A copy as a program makes it: into memory of its own.
void Copy(benchmark::State& state, Bytes const& bytes) {
    for (auto _ : state) {
        Bytes const copy(bytes);
        benchmark::DoNotOptimize(copy.data());
    }
}

void CopyInPlace(benchmark::State& state, Bytes const& bytes) {
    Bytes copy(bytes);
    for (auto _ : state) {
        std::memcpy(copy.data(), bytes.data(), bytes.size());
        benchmark::ClobberMemory();
    }
}

void Encode(benchmark::State& state, Bytes const& bytes) {
    for (auto _ : state) {
        vyncore::UTF8String text;
        vyncore::utility::EncodeBinaryDataToUTF8String(bytes.data(), bytes.size(), text);
        benchmark::DoNotOptimize(text.data());
    }
}

void Decode(benchmark::State& state, Bytes const& bytes) {
    vyncore::UTF8String text;
    vyncore::utility::EncodeBinaryDataToUTF8String(bytes.data(), bytes.size(), text);
    for (auto _ : state) {
        Bytes decoded;
        vyncore::utility::DecodeBinaryDataFromUTF8String(text, decoded);
        benchmark::DoNotOptimize(decoded.data());
    }
}

void Save(benchmark::State& state, AudioFilter const& filter) {
    for (auto _ : state) {
        PropList list;
        PresetData preset(list);
        filter.SaveSettings(preset);
    }
}

void Load(benchmark::State& state, AudioFilter& filter) {
    PropList list;
    PresetData preset(list);
    filter.SaveSettings(preset);
    for (auto _ : state)
        filter.LoadSettings(preset);
}

double InCopies(vynbench::Medians const& medians, char const* what, char const* text) {
    return (medians[what] - medians[text]) / medians["copy"];
}

} // namespace

int main(int argc, char** argv) {
    Initialize(true);
    bool kept = true;
    {
        FixtureModule const fixture(kModule, Configuration(kSize));
        auto const filter = vst3::FindOrLoadVST3Module(FixturePath16(kModule))->CreateVST3Filter(fixture.UniqueID());
        Bytes const bytes(kSize, 0x5A);
        benchmark::RegisterBenchmark("copy", [&](auto& state) { Copy(state, bytes); });
        benchmark::RegisterBenchmark("copy in place", [&](auto& state) { CopyInPlace(state, bytes); });
        benchmark::RegisterBenchmark("encode", [&](auto& state) { Encode(state, bytes); });
        benchmark::RegisterBenchmark("decode", [&](auto& state) { Decode(state, bytes); });
        benchmark::RegisterBenchmark("save", [&](auto& state) { Save(state, *filter); });
        benchmark::RegisterBenchmark("load", [&](auto& state) { Load(state, *filter); });
        vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
        std::printf("a copy of 10 MiB: %.2f ms into new memory, %.2f ms in place\n", medians["copy"] / 1e6,
                    medians["copy in place"] / 1e6);
        kept &= vynbench::Report("saving 10 MiB less the encoding", InCopies(medians, "save", "encode"), 4.0, "copies");
        kept &=
            vynbench::Report("loading 10 MiB less the decoding", InCopies(medians, "load", "decode"), 4.0, "copies");
    }
    Terminate();
    return kept ? 0 : 1;
}
