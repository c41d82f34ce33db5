// What the inventory and the catalogue cost per module when they hold 1,000, 10,000 and 100,000 modules with a filter
// each: what is done for a module may depend little on how many others there are.
#include "Comparison.h"

#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/strings/StringUtils.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vynaudiofilterhost;
using vyncore::UString;
using Locators = std::vector<PluginLocator>;

constexpr auto kTechnologyOfBench = static_cast<TechnologyType>(77);
constexpr int kCounts[] = {1000, 10000, 100000};

PluginModuleInfoManager& theInventory = PluginModuleInfoManager::GetInstance();
AudioFilterDescriptorManager& theCatalogue = AudioFilterDescriptorManager::GetInstance();
BannedPluginManager& theBans = BannedPluginManager::GetInstance();
Locators theDisk; ///< what the technology finds

UString Number(int number) {
    return vyncore::string::AsciiToUTF16(std::to_string(number));
}

PluginLocator LocatorOf(int number) {
    UString const name = u"Plug-in " + Number(number);
    return {kTechnologyOfBench, u"/usr/lib/vst3/Maker " + Number(number % 97) + u"/" + name +
                                    u".vst3/Contents/x86_64-linux/" + name + u".so"};
}

UString IDOf(int number) {
    return u"3:" + Number(number) + u" 0A1B2C3D 4E5F6071 8293A4B5";
}

Locators MakeLocators(int count) {
    Locators locators;
    for (int number = 0; number < count; ++number)
        locators.push_back(LocatorOf(number));
    return locators;
}

void Fill(int count) {
    vyncore::utility::Guid const guid(1, 2, 3, {4});
    for (int number = 0; number < count; ++number) {
        PluginLocator const locator = LocatorOf(number);
        UString const name = u"Plug-in " + Number(number);
        theInventory.AddPluginModuleInfo(
            new PluginModuleInfo(locator, name, u"A Maker", 0x10203, kTechnologyOfBench, true, false));
        theCatalogue.AddAudioFilterDescriptor(
            new AudioFilterDescriptor(locator, name, u"A Maker", 0x10203, kCategoryEffect, IDOf(number), guid, false));
    }
}

/// Files of all sizes, and inventory and catalogue brought to the size that a benchmark wants.
class Stage {
public:
    Stage() {
        for (int const count : kCounts) {
            theInventory.ClearAll(true);
            Fill(count);
            vyncore::filesupport::File file = FileOf(count);
            theInventory.SaveConfiguration(file, true);
        }
    }

    vyncore::filesupport::File FileOf(int count) const {
        return vyncore::filesupport::File(mFolder.Path16(std::to_string(count)));
    }

    /// Anew, so that no benchmark finds its memory as another one left it.
    void Load(int count) const {
        theInventory.ClearAll(true);
        theInventory.LoadConfiguration(FileOf(count));
    }

private:
    vyntest::TemporaryFolder mFolder;
};

void LoadAll(benchmark::State& state, Stage const& stage, int count) {
    for (auto _ : state)
        theInventory.LoadConfiguration(stage.FileOf(count));
    theInventory.ClearAll(true);
}

void SaveAll(benchmark::State& state, Stage const& stage, int count) {
    stage.Load(count);
    vyncore::filesupport::File file = stage.FileOf(count);
    for (auto _ : state)
        theInventory.SaveConfiguration(file, true);
    theInventory.ClearAll(true);
}

/// As scans go through them, or in no order, as projects ask for them.
enum class Order { kAsAdded, kNone };

template <class Items>
Items InOrder(Items items, Order order) {
    if (order == Order::kNone)
        std::shuffle(items.begin(), items.end(), std::mt19937(1));
    return items;
}

void FindAll(benchmark::State& state, Stage const& stage, int count, Order order) {
    stage.Load(count);
    Locators const locators = InOrder(MakeLocators(count), order);
    for (auto _ : state) {
        for (PluginLocator const& locator : locators)
            benchmark::DoNotOptimize(theInventory.FindPluginInfo(locator));
    }
    theInventory.ClearAll(true);
}

void ListAll(benchmark::State& state, Stage const& stage, int count) {
    stage.Load(count);
    for (auto _ : state)
        benchmark::DoNotOptimize(theInventory.GetEnabledPlugins());
    theInventory.ClearAll(true);
}

void RemoveAll(benchmark::State& state, Stage const& stage, int count) {
    Locators const locators = MakeLocators(count);
    for (auto _ : state) {
        state.PauseTiming();
        stage.Load(count);
        state.ResumeTiming();
        theInventory.RemovePluginLocators(locators);
    }
}

/// Of so many on the disk all are known; all are unknown; of so many known all have vanished.
enum class Disk { kKnown, kUnknown, kVanished };

void CollectAll(benchmark::State& state, Stage const& stage, int count, Disk disk) {
    theInventory.ClearAll(true);
    if (disk != Disk::kUnknown)
        stage.Load(count);
    if (disk != Disk::kVanished)
        theDisk = MakeLocators(count);
    Locators vanished;
    for (auto _ : state)
        benchmark::DoNotOptimize(theInventory.CollectPotentialPlugins(true, vanished));
    theDisk.clear();
    theInventory.ClearAll(true);
}

void BanAll(benchmark::State& state, Stage const&, int count) {
    for (int number = 0; number < count; ++number)
        theBans.AddBannedPlugin(LocatorOf(number));
    Locators const locators = MakeLocators(count);
    for (auto _ : state) {
        for (PluginLocator const& locator : locators)
            benchmark::DoNotOptimize(theBans.IsPluginBanned(locator));
    }
    for (PluginLocator const& locator : locators)
        theBans.RemoveBannedPlugin(locator);
}

void FindDescriptors(benchmark::State& state, Stage const& stage, int count, Order order) {
    stage.Load(count);
    std::vector<UString> ids;
    for (int number = 0; number < count; ++number)
        ids.push_back(IDOf(number));
    ids = InOrder(std::move(ids), order);
    for (auto _ : state) {
        for (UString const& id : ids)
            benchmark::DoNotOptimize(theCatalogue.GetComponentDescriptorForID(id));
    }
    theInventory.ClearAll(true);
}

void ClearDescriptors(benchmark::State& state, Stage const& stage, int count) {
    Locators const locators = MakeLocators(count);
    for (auto _ : state) {
        state.PauseTiming();
        stage.Load(count);
        state.ResumeTiming();
        for (PluginLocator const& locator : locators)
            theCatalogue.ClearInfosForLocator(locator);
    }
    theInventory.ClearAll(true);
}

void AddDescriptors(benchmark::State& state, Stage const& stage, int count) {
    stage.Load(count);
    std::vector<AudioFilterDescriptorManager::InfoPointer> const infos(theCatalogue.InfoBegin(),
                                                                       theCatalogue.InfoEnd());
    for (auto _ : state) {
        state.PauseTiming();
        theCatalogue.ClearExternalInfos();
        state.ResumeTiming();
        for (auto const& info : infos)
            theCatalogue.AddAudioFilterDescriptor(info);
    }
    theInventory.ClearAll(true);
}

struct Task {
    char const* name;
    std::function<void(benchmark::State&, Stage const&, int)> run;
    bool limited = true;
};

// What takes some tens of nanoseconds when all is in the processor's caches has no limit: it takes longer in the memory
// of the machine, whatever is done.
Task const kTasks[] = {
    {"load", LoadAll},
    {"save", SaveAll},
    {"look up", [](auto& state, auto& stage, int count) { FindAll(state, stage, count, Order::kAsAdded); }},
    {"look up in no order", [](auto& state, auto& stage, int count) { FindAll(state, stage, count, Order::kNone); },
     false},
    {"list the enabled", ListAll},
    {"remove", RemoveAll},
    {"collect, all known", [](auto& state, auto& stage, int count) { CollectAll(state, stage, count, Disk::kKnown); }},
    {"collect, all new", [](auto& state, auto& stage, int count) { CollectAll(state, stage, count, Disk::kUnknown); }},
    {"collect, all gone",
     [](auto& state, auto& stage, int count) { CollectAll(state, stage, count, Disk::kVanished); }},
    {"look up bans", BanAll},
    {"add descriptors", AddDescriptors, false},
    {"clear descriptors", ClearDescriptors},
    {"look up descriptors",
     [](auto& state, auto& stage, int count) { FindDescriptors(state, stage, count, Order::kAsAdded); }, false},
    {"look up descriptors in no order",
     [](auto& state, auto& stage, int count) { FindDescriptors(state, stage, count, Order::kNone); }, false},
};

std::string NameOf(Task const& task, int count) {
    return std::string(task.name) + " of " + std::to_string(count);
}

/// Whether the task keeps to its limit.
bool Run(Task const& task, Stage const& stage, int argc, char** argv) {
    benchmark::ClearRegisteredBenchmarks();
    for (int const count : kCounts)
        benchmark::RegisterBenchmark(NameOf(task, count).c_str(), [&, count](auto& state) {
            task.run(state, stage, count);
        })->Unit(benchmark::kMillisecond);
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    std::vector<double> perModule;
    for (int const count : kCounts) {
        perModule.push_back(1e6 * medians[NameOf(task, count)] / count);
        std::printf("%s: %.0f nanoseconds per module\n", NameOf(task, count).c_str(), perModule.back());
    }
    return !task.limited || vynbench::Report(std::string(task.name) + ": of 100,000 over of 1,000, per module",
                                             perModule.back() / perModule.front(), 1.5, "times");
}

} // namespace

int main(int argc, char** argv) {
    setenv("VST3_PATH", "", 1); // what lies on this machine is not to be found
    theInventory.AddPluginTechnology(new PluginTechnology(
        kTechnologyOfBench, [](auto const&) { return theDisk; }, {}, {}, {}, false));
    Stage const stage;
    bool kept = true;
    for (Task const& task : kTasks)
        kept &= Run(task, stage, argc, argv);
    return kept ? 0 : 1;
}
