#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vynaudiofilterhost::utility {

using vyncore::UTF8String;
using vyncore::proplist::PropList;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::ChannelMap;

namespace {

UTF8String SourceKey(int number) {
    return "S_" + std::to_string(number);
}

UTF8String TargetKey(int number) {
    return "D_" + std::to_string(number);
}

/// A map in the making, and which channels its list has spoken of.
class MapReader {
public:
    MapReader(AudioBusDescription const& targetBus, int numChannels)
        : mSources(static_cast<std::size_t>(numChannels > 0 ? numChannels : 0)),
          mTargets(static_cast<std::size_t>(targetBus.GetChannelCount())) {}

    bool Read(PropList const& list, int count) {
        for (int number = 1; number <= count; ++number) {
            int source = 0;
            int target = 0;
            if (!list.GetValue(SourceKey(number), source) || !list.GetValue(TargetKey(number), target))
                return false;
            Connect(source, target);
        }
        return true;
    }

    // A channel that nobody spoke of gets the target of its number, as far as the targets go.
    void FillUnmapped() {
        for (std::size_t channel = 0; channel < mSources.size(); ++channel) {
            bool const taken = channel < mTargets.size() && mTargets[channel];
            if (mSources[channel] || taken)
                continue;
            if (channel >= mTargets.size())
                return;
            mTargets[channel] = true;
            SetMapping(mMap, static_cast<int>(channel), static_cast<int>(channel));
        }
    }

    ChannelMap const& GetMap() const { return mMap; }

private:
    static bool Has(std::vector<bool> const& channels, int channel) {
        return channel >= 0 && static_cast<std::size_t>(channel) < channels.size();
    }

    // A source that is stored as unconnected counts as spoken of.
    void Connect(int source, int target) {
        if (!Has(mSources, source))
            return;
        mSources[static_cast<std::size_t>(source)] = true;
        if (!Has(mTargets, target))
            return;
        mTargets[static_cast<std::size_t>(target)] = true;
        SetMapping(mMap, source, target);
    }

    std::vector<bool> mSources;
    std::vector<bool> mTargets;
    ChannelMap mMap;
};

} // namespace

bool LoadChannelMap(PropList const* list, AudioBusDescription const& targetBus, int numChannels, bool fillUnmapped,
                    ChannelMap& map) {
    MapReader reader(targetBus, numChannels);
    int count = 0;
    bool whole = list && list->GetValue("C", count);
    if (whole) {
        whole = reader.Read(*list, count);
        if (fillUnmapped)
            reader.FillUnmapped();
    }
    map = reader.GetMap();
    return whole;
}

bool SaveChannelMap(ChannelMap const& map, PropList* list) {
    if (!list)
        return false;
    list->SetValue("C", map.GetNumberOfChannels());
    for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry) {
        list->SetValue(SourceKey(entry + 1), entry);
        list->SetValue(TargetKey(entry + 1), map[entry]);
    }
    return true;
}

} // namespace vynaudiofilterhost::utility
