#include "vynmediatypes/ChannelMap.h"

#include <algorithm>
#include <cstddef>

namespace vynmediatypes {

void ChannelMap::AddChannel(AudioChannelLayout const& layout, int value) {
    mEntries.push_back({layout, value});
}

void ChannelMap::SetChannel(int index, int value) {
    if (Has(index))
        mEntries[static_cast<std::size_t>(index)].value = value;
}

void ChannelMap::SetChannelLayout(int index, AudioChannelLayout const& layout) {
    if (Has(index))
        mEntries[static_cast<std::size_t>(index)].layout = layout;
}

AudioChannelLayout const& ChannelMap::GetChannelLayout(int index) const noexcept {
    static AudioChannelLayout const& kNone = *new AudioChannelLayout;
    return Has(index) ? mEntries[static_cast<std::size_t>(index)].layout : kNone;
}

int ChannelMap::operator[](int index) const noexcept {
    return Has(index) ? mEntries[static_cast<std::size_t>(index)].value : kSourceChannelIndex_NoMatch;
}

int ChannelMap::Find(int value) const noexcept {
    auto const found =
        std::find_if(mEntries.begin(), mEntries.end(), [value](Entry const& entry) { return entry.value == value; });
    return found == mEntries.end() ? -1 : static_cast<int>(found - mEntries.begin());
}

bool ChannelMap::IsMappingEqual(ChannelMap const& other) const noexcept {
    return std::equal(mEntries.begin(), mEntries.end(), other.mEntries.begin(), other.mEntries.end(),
                      [](Entry const& mine, Entry const& theirs) { return mine.value == theirs.value; });
}

std::vector<vyncore::UString> GetChannelMappingLabels(ChannelMap const& map, int count,
                                                      AudioChannelLayout const& layout) {
    std::vector<vyncore::UString> labels(static_cast<std::size_t>(std::max(count, 0)));
    for (std::size_t channel = 0; channel < labels.size(); ++channel) {
        int const target = map[static_cast<int>(channel)];
        if (target >= 0 && static_cast<std::size_t>(target) < layout.size())
            labels[channel] = AudioChannelDescriptionName(layout[static_cast<std::size_t>(target)].GetLabel());
    }
    return labels;
}

} // namespace vynmediatypes
