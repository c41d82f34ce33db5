#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioChannelLayout.h"

#include <vector>

namespace vynmediatypes {

/// Which channel of a track each channel of a filter is connected with. Entry n belongs to filter channel n; its value
/// is the number of a target channel or kSourceChannelIndex_NoMatch, and it carries a layout besides. A plain value; a
/// map that two threads share is guarded by its owner.
class VYN_API ChannelMap {
public:
    static constexpr int kSourceChannelIndex_NoMatch = -1;

    /// Appends an entry.
    /// [any-thread]
    void AddChannel(AudioChannelLayout const& layout, int value);

    /// Sets the value of an entry. An index outside the map does nothing.
    /// [any-thread]
    void SetChannel(int index, int value);

    /// Sets the layout of an entry. An index outside the map does nothing.
    /// [any-thread]
    void SetChannelLayout(int index, AudioChannelLayout const& layout);

    /// The layout of an entry; an empty one for an index outside the map. Valid until the map changes.
    /// [any-thread]
    AudioChannelLayout const& GetChannelLayout(int index) const noexcept;

    /// [any-thread]
    int GetNumberOfChannels() const noexcept { return static_cast<int>(mEntries.size()); }

    /// The value of an entry; kSourceChannelIndex_NoMatch for an index outside the map.
    /// [any-thread]
    int operator[](int index) const noexcept;

    /// The first entry with this value, or -1 when none has it.
    /// [any-thread]
    int Find(int value) const noexcept;

    /// Whether both maps have as many entries with the same values, whatever their layouts.
    /// [any-thread]
    bool IsMappingEqual(ChannelMap const& other) const noexcept;

    /// Whether values and layouts are the same.
    /// [any-thread]
    friend bool operator==(ChannelMap const&, ChannelMap const&) = default;

private:
    struct Entry {
        AudioChannelLayout layout;
        int value;

        friend bool operator==(Entry const&, Entry const&) = default;
    };

    bool Has(int index) const noexcept { return index >= 0 && index < GetNumberOfChannels(); }

    std::vector<Entry> mEntries;
};

/// What each of the first `count` channels of a track is connected with, in their order and joined by ", ": the short
/// text of the filter channel, as `layout`, the one of the filter's first bus, has it; that channel's number, from 0,
/// when it lies beyond that layout; "-" for a track channel without connection. Empty for a count of 0 or less.
/// `count` is the number of channels that the track has: the text has as many parts.
/// [any-thread]
VYN_API vyncore::UString GetChannelMappingLabels(ChannelMap const& map, int count, AudioChannelLayout const& layout);

} // namespace vynmediatypes
