#pragma once

#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioBusDescription.h"
#include "vynmediatypes/AudioChannelLayout.h"

#include "pluginterfaces/vst/vsttypes.h"

#include <vector>

/// Between the speaker masks of VST3 and the channel labels and buses of everything above. Channels stand in the order
/// of the mask's bits, which is the order of a plug-in's channels.
namespace vynaudiofilterhost::vst3 {

/// What a plug-in of an SDK before this version calls third-order ambisonics is read speaker by speaker.
inline constexpr unsigned kThirdOrderAmbisonicSDKVersion = 0x030608;

/// Replaces `labels` by the labels of the mask's speakers. Speakers without a label are left out, unless no speaker of
/// the mask has one: then each is 0.
/// [any-thread]
void LabelsFromArrangement(Steinberg::Vst::SpeakerArrangement arrangement,
                           std::vector<vynmediatypes::AudioChannelDescription>& labels);

/// Appends a bus with the mask's channels, nothing for an empty mask. `busType` is the plug-in's: 0 is main, any other
/// a side chain. An empty name becomes that of the arrangement, or of the layout. `sdkVersion` is the plug-in's, as in
/// 0x030608.
/// [any-thread]
void AddBusForArrangement(Steinberg::Vst::SpeakerArrangement arrangement, int busType, vyncore::UString const& name,
                          unsigned sdkVersion, std::vector<vynmediatypes::AudioBusDescription>& buses);

/// Replaces `arrangements` by the masks to request for these layouts. But for ambisonics only the number of channels
/// counts; a layout of a number that no mask is asked for (all but 1, 2, 4, 6, 8) gives none, so that there may be
/// fewer masks than layouts. [any-thread]
void ArrangementsFromLayouts(std::vector<vynmediatypes::AudioChannelLayout> const& layouts,
                             std::vector<Steinberg::Vst::SpeakerArrangement>& arrangements);

} // namespace vynaudiofilterhost::vst3
