#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"
#include "vynmediatypes/AudioChannelLayout.h"

#include <memory>

namespace vynaudiofilterhost::vst {

struct DeleteSpeakerArrangement {
    void operator()(VstSpeakerArrangement* arrangement) const noexcept;
};

/// An arrangement of the host's own, as long as its channels need.
using SpeakerArrangementPointer = std::unique_ptr<VstSpeakerArrangement, DeleteSpeakerArrangement>;

/// The arrangement for so many channels; null for none. What the channels are called doesn't count: six are 5.1.
/// [main-thread]
SpeakerArrangementPointer BuildSpeakerArrangement(vynmediatypes::AudioChannelLayout const& layout);

/// Makes the first six speakers those of 5.1.
/// [main-thread]
void FillSurround51Arrangement(VstSpeakerArrangement* arrangement);

/// A copy with all speakers of a record that holds as many as it says. A negative number of them counts as none.
/// [main-thread]
SpeakerArrangementPointer CopySpeakerArrangement(VstSpeakerArrangement const& arrangement);

/// A speaker of the arrangement, also one beyond the eighth, from 0; no more than it was made for.
/// [main-thread]
VstSpeakerProperties& SpeakerAt(VstSpeakerArrangement& arrangement, int index);

} // namespace vynaudiofilterhost::vst
