#pragma once

#include "vyncore/Export.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioBusDescription.h"
#include "vynmediatypes/AudioChannelLayout.h"
#include "vynmediatypes/ChannelMap.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

/// What is done with channel maps. Here an entry's number is the source, a filter channel, and its value the target, a
/// channel of the track; -1 is no connection. A connected entry carries a layout of one channel, an unconnected one an
/// empty layout. The functions hold no state, lock nothing and announce nothing.
namespace vynaudiofilterhost::utility {

/// The number of channels of all buses together.
/// [any-thread]
VYN_API int CountChannels(std::vector<vynmediatypes::AudioBusDescription> const& buses);

/// Whether any single bus has a channel of this number. A negative number is never there.
/// [any-thread]
VYN_API bool ChannelIdxIsPresentInBusDescriptions(int channel,
                                                  std::vector<vynmediatypes::AudioBusDescription> const& buses);

/// Replaces the map by one of so many entries with values 0, 1, 2, …; they count as connected only with `connect`.
/// [any-thread]
VYN_API void CreateEmptyChannelMap(int numChannels, bool connect, vynmediatypes::ChannelMap& map);

/// Connects a source with a target. The map grows by unconnected entries as far as needed. A source that is negative or
/// beyond 65,535 does nothing.
/// [any-thread]
VYN_API void SetMapping(vynmediatypes::ChannelMap& map, int source, int target);

/// Disconnects a source, whose entry stays. One outside the map does nothing.
/// [any-thread]
VYN_API void RemoveMappingFromSource(vynmediatypes::ChannelMap& map, int source);

/// Disconnects the first source that leads to the target. A negative target does nothing.
/// [any-thread]
VYN_API void RemoveMappingToTarget(vynmediatypes::ChannelMap& map, int target);

/// Connects one entry per element of `channels`, which it takes from the back until none is left: the first entry from
/// `start` on and below `limit` whose number is no entry's value gets the target `nextTarget`, which then rises by 1.
/// Ends early when no such entry is left; the element that found none is gone by then.
/// [any-thread]
VYN_API void AssignChannels(vynmediatypes::ChannelMap& map, vynmediatypes::AudioChannelLayout& channels,
                            int& nextTarget, int limit, int start);

/// Maps the first bus onto the channels of a track by label: filter channels are served in order, each gets the lowest
/// free target of its own label. When none matches at all, channels connect by position. The result has as many entries
/// as the bus has channels; it is empty without a bus.
/// [any-thread]
VYN_API vynmediatypes::ChannelMap BuildBestFitChannelMap(std::vector<vynmediatypes::AudioBusDescription> const& buses,
                                                         vynmediatypes::AudioChannelLayout const& targetLayout);

/// Copies one list of channel numbers over another of the same size that the process thread may be reading: each
/// element is written whole, every -1 before any connection. Does nothing when a list is empty or the sizes differ.
/// [main-thread]
VYN_API void CopyChannelMapIndexVector(std::vector<int> const& from, std::vector<int>& to);

/// Replaces the map by the one stored in the list (docs/formats.md), in every case. False when the list is null, or
/// keys are missing; what was read until then is in the map.
/// @param targetBus     connections with channels that it doesn't have are dropped
/// @param numChannels   of the filter; entries beyond are dropped
/// @param fillUnmapped  connects each channel that the list doesn't mention with the target of its own number, unless
///                      another leads there
/// [any-thread]
VYN_API bool LoadChannelMap(vyncore::proplist::PropList const* list,
                            vynmediatypes::AudioBusDescription const& targetBus, int numChannels, bool fillUnmapped,
                            vynmediatypes::ChannelMap& map);

/// Writes the map into the list (docs/formats.md). False when the list is null.
/// [any-thread]
VYN_API bool SaveChannelMap(vynmediatypes::ChannelMap const& map, vyncore::proplist::PropList* list);

/// A text for a person: which channel of the filter's first buses each of the track's channels is connected with.
/// @param maxChannels  so many channels of the track at most
/// Empty for a null filter. [main-thread]
VYN_API vyncore::UString GetAudioFilterChannelMappingsDescription(boost::intrusive_ptr<AudioFilter> const& filter,
                                                                  std::uint64_t maxChannels);

} // namespace vynaudiofilterhost::utility
