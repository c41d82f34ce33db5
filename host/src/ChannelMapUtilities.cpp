#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/config/ZString.h"

#include <algorithm>
#include <atomic>
#include <cstddef>

namespace vynaudiofilterhost::utility {

using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelDescription;
using vynmediatypes::AudioChannelLayout;
using vynmediatypes::ChannelMap;

namespace {

constexpr int kNone = ChannelMap::kSourceChannelIndex_NoMatch;

AudioChannelLayout LayoutOfConnection() {
    return AudioChannelLayout(1, AudioChannelDescription(0));
}

// More channels than any filter or track has.
constexpr int kMostEntries = 65536;

void GrowTo(ChannelMap& map, int entries) {
    while (map.GetNumberOfChannels() < entries)
        map.AddChannel({}, kNone);
}

void Disconnect(ChannelMap& map, int source) {
    map.SetChannelLayout(source, {});
    map.SetChannel(source, kNone);
}

AudioChannelLayout LayoutOfFirst(std::vector<AudioBusDescription> const& buses) {
    return buses.empty() ? AudioChannelLayout() : buses.front().GetLayout();
}

/// How many entries of a map have each value from 0 up to a limit.
class ValueCounts {
public:
    ValueCounts(ChannelMap const& map, int limit) : mCounts(static_cast<std::size_t>(std::max(limit, 0))) {
        for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry)
            Add(map[entry], 1);
    }

    void Add(int value, int change) {
        if (value >= 0 && static_cast<std::size_t>(value) < mCounts.size())
            mCounts[static_cast<std::size_t>(value)] += change;
    }

    /// The first value from `start` on that no entry has, or the limit.
    int FindUnused(int start) const {
        auto const from = mCounts.begin() + std::min(start, static_cast<int>(mCounts.size()));
        return static_cast<int>(std::find(from, mCounts.end(), 0) - mCounts.begin());
    }

private:
    std::vector<int> mCounts;
};

} // namespace

int CountChannels(std::vector<AudioBusDescription> const& buses) {
    std::size_t count = 0;
    for (AudioBusDescription const& bus : buses)
        count += static_cast<std::size_t>(bus.GetChannelCount());
    return static_cast<int>(count);
}

bool ChannelIdxIsPresentInBusDescriptions(int channel, std::vector<AudioBusDescription> const& buses) {
    return channel >= 0 && std::ranges::any_of(buses, [channel](AudioBusDescription const& bus) {
               return bus.GetChannelCount() > channel;
           });
}

void CreateEmptyChannelMap(int numChannels, bool connect, ChannelMap& map) {
    map = ChannelMap();
    for (int channel = 0; channel < numChannels; ++channel) {
        map.AddChannel({}, channel);
        if (connect)
            SetMapping(map, channel, channel);
    }
}

void SetMapping(ChannelMap& map, int source, int target) {
    if (source < 0 || source >= kMostEntries)
        return;
    GrowTo(map, source + 1);
    map.SetChannelLayout(source, LayoutOfConnection());
    map.SetChannel(source, target);
}

void RemoveMappingFromSource(ChannelMap& map, int source) {
    Disconnect(map, source); // which does nothing outside the map
}

void RemoveMappingToTarget(ChannelMap& map, int target) {
    if (target >= 0)
        Disconnect(map, map.Find(target));
}

void AssignChannels(ChannelMap& map, AudioChannelLayout& channels, int& nextTarget, int limit, int start) {
    start = std::max(start, 0);
    // So far on there is always an entry, because a round adds one value at most.
    std::size_t const far =
        static_cast<std::size_t>(start) + static_cast<std::size_t>(map.GetNumberOfChannels()) + channels.size() + 1;
    ValueCounts values(map, static_cast<int>(std::min(static_cast<std::size_t>(std::max(limit, 0)), far)));
    while (!channels.empty()) {
        channels.pop_back();
        int const source = values.FindUnused(start);
        if (source >= limit)
            return;
        values.Add(map[source], -1);
        values.Add(nextTarget, 1);
        SetMapping(map, source, nextTarget++);
    }
}

ChannelMap BuildBestFitChannelMap(std::vector<AudioBusDescription> const& buses,
                                  AudioChannelLayout const& targetLayout) {
    AudioChannelLayout const layout = LayoutOfFirst(buses);
    ChannelMap map;
    std::vector<bool> used(targetLayout.size());
    for (std::size_t channel = 0; channel < layout.size(); ++channel) {
        for (std::size_t target = 0; target < targetLayout.size(); ++target) {
            if (used[target] || targetLayout[target] != layout[channel])
                continue;
            SetMapping(map, static_cast<int>(channel), static_cast<int>(target));
            used[target] = true;
            break;
        }
    }
    if (map.GetNumberOfChannels() == 0)
        CreateEmptyChannelMap(static_cast<int>(std::min(targetLayout.size(), layout.size())), true, map);
    GrowTo(map, static_cast<int>(layout.size()));
    return map;
}

void CopyChannelMapIndexVector(std::vector<int> const& from, std::vector<int>& to) {
    if (from.size() != to.size())
        return;
    auto const store = [&](std::size_t place) {
        std::atomic_ref<int>(to[place]).store(from[place], std::memory_order_release);
    };
    for (std::size_t place = 0; place < from.size(); ++place) {
        if (from[place] == kNone)
            store(place);
    }
    for (std::size_t place = 0; place < from.size(); ++place)
        store(place);
}

vyncore::UString GetAudioFilterChannelMappingsDescription(boost::intrusive_ptr<AudioFilter> const& filter,
                                                          std::uint64_t maxChannels) {
    if (!filter)
        return {};
    auto const targets =
        static_cast<int>(std::min<std::uint64_t>(maxChannels, filter->GetChannelMapTargetChannelLayout().size()));
    auto const describe = [&](AudioFilter::Direction direction, AudioFilter::Buses const& buses) {
        return GetChannelMappingLabels(filter->GetChannelMap(direction), targets, LayoutOfFirst(buses));
    };
    return vyncore::ZString("$$$/vynaudiofilterhost/ChannelMapText=In: @0 | Out: @1",
                            describe(AudioFilter::kDirectionInput, filter->GetInputBuses()),
                            describe(AudioFilter::kDirectionOutput, filter->GetOutputBuses()));
}

} // namespace vynaudiofilterhost::utility
