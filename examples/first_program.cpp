// Sends a second of a saw wave through the first effect of a VST3 plug-in and prints how loud it comes out.

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

using namespace vynaudiofilterhost;
using Block = std::array<float, 512>;

static boost::intrusive_ptr<AudioFilter> MakeFilter(char const* path) {
    vyncore::UString reason;
    std::vector<vyncore::UString> ids;
    auto const module = OpenPluginModule(vyncore::string::UTF8to16(path), reason);
    bool const found = module && module->GetPluginInfo(ids) && !ids.empty();
    auto filter = found ? module->CreateAudioFilter(ids.front()) : nullptr;
    if (!filter)
        std::fprintf(stderr, "%s: %s\n", path, module ? "no effect in it" : vyncore::string::UTF16to8(reason).c_str());
    return filter;
}

static float PlaySaw(AudioFilter& filter) {
    // A new filter is suspended: the time to say what rendering rests on. It takes the nearest buses that it can do.
    auto const stereo = vynmediatypes::AudioBusDescription::CreateStereo(u"main", {});
    filter.SetSampleRate(48000.0f);
    filter.SetBlockSize(Block().size());
    filter.RequestBusConfiguration({stereo}, {stereo});

    Block saw;
    std::generate(saw.begin(), saw.end(), [n = 0]() mutable { return static_cast<float>(n++ % 128) / 128.0f - 0.5f; });
    std::vector<float*> in(static_cast<std::size_t>(filter.GetNumberOfInputChannels()), saw.data());
    std::vector<Block> sound(static_cast<std::size_t>(filter.GetNumberOfOutputChannels()));
    std::vector<float*> out;
    for (Block& channel : sound)
        out.push_back(channel.data());

    // An application does this on its render thread.
    float peak = 0.0f;
    filter.Resume();
    for (std::size_t position = 0; position < 48000; position += saw.size()) {
        ChannelFlags silent;
        filter.ProcessWithMapping(in.data(), out.data(), static_cast<int>(saw.size()), ChannelFlags(), silent);
        for (unsigned channel = 0; channel < sound.size(); ++channel)
            for (float const sample : sound[channel])
                peak = silent.Test(channel) ? peak : std::max(peak, std::abs(sample));
    }
    filter.Suspend();
    return peak;
}

int main(int argc, char** argv) {
    if (argc != 2)
        return std::fprintf(stderr, "usage: first_program PLUG-IN\n"), 2;
    Initialize(false);
    bool rendered = false;
    if (auto const filter = MakeFilter(argv[1])) {
        std::printf("Peak 0.50 in, %.2f out.\n", static_cast<double>(PlaySaw(*filter)));
        rendered = true;
    } // no filter is left when the library stops
    Terminate();
    return rendered ? 0 : 1;
}
