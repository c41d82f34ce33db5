// What it costs to load a module, make a filter, prepare it and take it down again, over the bare calls on the plug-in.
#include "BarePlugin.h"
#include "Comparison.h"

#include "support/FixtureModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/strings/StringUtils.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace vynaudiofilterhost;

void RunBare(benchmark::State& state, std::string const& path) {
    for (auto _ : state)
        vynbench::BarePlugin const plugin(path);
}

void RunFilter(benchmark::State& state, std::string const& path) {
    for (auto _ : state) {
        vst3::VST3PluginModule module(vyncore::string::UTF8to16(path));
        std::vector<vyncore::UString> classIDs;
        if (!module.Load() || !module.GetPluginInfo(classIDs)) {
            state.SkipWithError("the module does not load");
            return;
        }
        if (auto const filter = module.CreateVST3Filter(classIDs.front())) {
            filter->SetSampleRate(48000.0f);
            filter->SetBlockSize(512);
            filter->Resume();
            filter->Suspend();
        }
        module.Unload();
    }
}

std::vector<std::string> Modules() {
    std::vector<std::string> modules = {vynfixtures::FixturePath("configurable.vst3")};
    for (std::string const title : {"ZamComp", "ZamVerb", "ZaMultiCompX2"}) {
        std::string const path = "/usr/lib/vst3/" + title + ".vst3/Contents/x86_64-linux/" + title + ".so";
        if (std::filesystem::exists(path))
            modules.push_back(path);
    }
    return modules;
}

} // namespace

int main(int argc, char** argv) {
    Initialize(true);
    std::vector<std::string> const modules = Modules();
    for (std::string const& path : modules) {
        benchmark::RegisterBenchmark(("bare " + path).c_str(), [path](auto& state) { RunBare(state, path); });
        benchmark::RegisterBenchmark(("filter " + path).c_str(), [path](auto& state) { RunFilter(state, path); });
    }
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    bool kept = true;
    for (std::string const& path : modules) {
        double const bare = medians["bare " + path];
        double const filter = medians["filter " + path];
        std::printf("%s: bare %.1f us, filter %.1f us\n", path.c_str(), bare / 1000.0, filter / 1000.0);
        kept &=
            vynbench::Report("  load, creation, preparation and end over the bare calls", filter / bare, 1.3, "times");
    }
    Terminate();
    return kept ? 0 : 1;
}
