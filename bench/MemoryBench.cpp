// What a filter over a plug-in with 2,000 parameters costs in memory.
#include "support/FixtureModule.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/ParameterPointRing.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

#include <cstdio>
#include <fstream>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;

constexpr int kParameters = 2000;
constexpr double kPage = 4096.0;
constexpr double kMegabyte = 1024.0 * 1024.0;

struct Memory {
    double virtualMegabytes;
    double residentMegabytes;
};

Memory ReadMemory() {
    double total = 0.0;
    double resident = 0.0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return {total * kPage / kMegabyte, resident * kPage / kMegabyte};
}

void Print(char const* what, Memory before, Memory after) {
    std::printf("%-44s %8.2f MiB resident, %8.2f MiB of addresses\n", what,
                after.residentMegabytes - before.residentMegabytes, after.virtualMegabytes - before.virtualMegabytes);
}

} // namespace

int main() {
    Initialize(true);
    {
        FixtureConfiguration configuration;
        configuration.parameterCount = kParameters;
        configuration.logging = false;
        FixtureModule fixture("configurable.vst3", configuration);
        auto const module = vst3::FindOrLoadVST3Module(FixturePath16("configurable.vst3"));
        auto const warm = module->CreateVST3Filter(fixture.UniqueID());
        Memory const before = ReadMemory();
        auto const filter = module->CreateVST3Filter(fixture.UniqueID());
        filter->SetBlockSize(64);
        Memory const made = ReadMemory();
        Print("a filter with 2,000 parameters, made", before, made);
        filter->Resume();
        for (int index = 0; index < kParameters; ++index)
            filter->SetParameter(index, 0.25f);
        float samples[64] = {};
        float* channels[] = {samples, samples};
        ChannelFlags outFlags;
        filter->ProcessWithMapping(channels, channels, 64, ChannelFlags(), outFlags);
        Print("every parameter set once", before, ReadMemory());
        std::printf("capacity: %zu points a parameter, in two rings of %.2f MiB and two lists of %.2f MiB\n",
                    vst3::kParameterPointCapacity, kParameters * sizeof(vst3::ParameterPointRing) / kMegabyte,
                    kParameters * vst3::kParameterPointCapacity * sizeof(vst3::ParameterPoint) / kMegabyte);
        filter->Suspend();
    }
    Terminate();
    return 0;
}
