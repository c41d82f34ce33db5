#include "vynmediatypes/ChannelMap.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace vynmediatypes {
namespace {

vyncore::UString FilterChannelLabel(int channel, AudioChannelLayout const& layout) {
    if (channel < 0)
        return u"-";
    auto const index = static_cast<std::size_t>(channel);
    return index < layout.size() ? AudioChannelDescriptionName(layout[index].GetLabel())
                                 : vyncore::string::AsciiToUTF16(std::to_string(channel));
}

} // namespace

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
    static AudioChannelLayout const& kNone = *new AudioChannelLayout; // NOLINT(bugprone-unhandled-exception-at-new)
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

vyncore::UString GetChannelMappingLabels(ChannelMap const& map, int count, AudioChannelLayout const& layout) {
    vyncore::UString labels;
    for (int target = 0; target < count; ++target) {
        if (target > 0)
            labels += u", ";
        labels += FilterChannelLabel(map.Find(target), layout);
    }
    return labels;
}

} // namespace vynmediatypes
