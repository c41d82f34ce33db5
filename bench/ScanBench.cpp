// What a scan costs a user: the modules of /usr/lib/vst3 and those of /usr/lib/vst looked through by `vynhost scan` in
// children, beside bare loops over them in one process; a second scan, which opens none; and the start of `vynhost
// list` with 10,000 filters.
#include "BareScan.h"
#include "BareVSTScan.h"
#include "Comparison.h"

#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/strings/StringUtils.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace vynaudiofilterhost;
using vyncore::UString;

constexpr char const* kBare = "--bare";
constexpr char const* kBareVST = "--bare-vst";

std::vector<std::string> ListModules(UString const& folder, ModuleFileKind const& kind) {
    std::vector<std::string> modules;
    for (UString const& path : FindModuleFiles({folder}, kind))
        modules.push_back(vyncore::string::UTF16to8(path));
    return modules;
}

std::vector<std::string> VST3Modules() {
    return ListModules(u"/usr/lib/vst3", {.extension = u".vst3", .inBundles = true});
}

std::vector<std::string> VSTModules() {
    return ListModules(u"/usr/lib/vst", {.extension = u".so"});
}

/// Runs a shell command at each turn.
void RunCommand(benchmark::State& state, std::string const& command) {
    for (auto _ : state) {
        if (std::system((command + " > /dev/null").c_str()) != 0)
            state.SkipWithError(("failed: " + command).c_str());
    }
}

/// An inventory of so many modules, none of which is on the disk.
void SaveInventory(vyncore::filesupport::File file, int count) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    for (int number = 0; number < count; ++number) {
        std::string const text = "Plug-in " + std::to_string(number);
        UString const name = vyncore::string::UTF8to16(text);
        PluginLocator const locator(kTechnologyVST3, u"/nowhere/" + name + u".vst3");
        inventory.AddPluginModuleInfo(new PluginModuleInfo(locator, name, u"A Maker", 1, kTechnologyVST3, true, false));
        AudioFilterDescriptorManager::GetInstance().AddAudioFilterDescriptor(new AudioFilterDescriptor(
            locator, name, u"A Maker", 1, kCategoryEffect, u"3:" + name, vyncore::utility::Guid(1, 2, 3, {4}), false));
    }
    inventory.SaveConfiguration(file, false);
}

/// Of medians in milliseconds.
bool ReportAll(vynbench::Medians const& medians) {
    bool kept =
        vynbench::Report("a scan in two children over the bare loop", medians["scan"] / medians["bare"], 1.0, "times");
    kept &= vynbench::Report("the same for VST 2.x", medians["scan VST"] / medians["bare VST"], 1.0, "times");
    kept &= vynbench::Report("the second scan", medians["second scan"], 50.0, "ms");
    return vynbench::Report("list with 10,000 filters", medians["list"], 150.0, "ms") && kept;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == kBare)
        return vynbench::ScanBare(VST3Modules()) > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    if (argc > 1 && std::string(argv[1]) == kBareVST)
        return vynbench::ScanBareVST(VSTModules()) > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    vyntest::TemporaryFolder const scanned;
    vyntest::TemporaryFolder const filled;
    SaveInventory(vyncore::filesupport::File(filled.Path16(
                      vyncore::string::UTF16to8(PluginModuleInfoManager::GetInstance().GetSettingsFileName()))),
                  10000);
    // Plug-ins write below the user's home.
    std::string const home = "HOME=" + scanned.Path().string() + " ";
    std::string const program = home + "VYNHOST_HOME=" + scanned.Path().string() + " " + VYNHOST_PROGRAM;
    std::string const scan = program + " scan /usr/lib/vst3 --jobs 2";
    std::vector<std::pair<char const*, std::string>> const commands{
        {"bare", home + argv[0] + " " + kBare},
        {"scan", scan + " --all"},
        {"bare VST", home + argv[0] + " " + kBareVST},
        {"scan VST", program + " scan /usr/lib/vst --jobs 2 --all"},
        {"second scan", scan},
        {"list", "VYNHOST_HOME=" + filled.Path().string() + " " + VYNHOST_PROGRAM + " list"}};
    if (std::system((scan + " > /dev/null").c_str()) != 0)
        return EXIT_FAILURE;
    for (auto const& [name, command] : commands)
        benchmark::RegisterBenchmark(name, [&command = command](auto& state) { RunCommand(state, command); })
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    std::printf("%zu VST3 modules: bare %.1f ms, scan %.1f ms\n", VST3Modules().size(), medians["bare"],
                medians["scan"]);
    std::printf("%zu VST 2.x modules: bare %.1f ms, scan %.1f ms\n", VSTModules().size(), medians["bare VST"],
                medians["scan VST"]);
    return ReportAll(medians) ? EXIT_SUCCESS : EXIT_FAILURE;
}
