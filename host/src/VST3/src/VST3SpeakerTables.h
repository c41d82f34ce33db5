#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vynaudiofilterhost::vst3 {

/// Which channel label stands for which speaker of a VST3 arrangement. Constant; the speakers are those that have a
/// label, one label each.
class SpeakerLabelTable {
public:
    /// The label of the speaker at a bit of an arrangement, none for a speaker without label.
    /// [any-thread]
    static std::optional<std::int32_t> LabelFromBit(int bit) noexcept;

    /// The bit of the speaker with that label, none for a label that no speaker has.
    /// [any-thread]
    static std::optional<int> BitFromLabel(std::int32_t label) noexcept;
};

/// The name of a whole arrangement, such as "5.1"; empty for one without a name.
/// [any-thread]
std::u16string_view ArrangementName(Steinberg::Vst::SpeakerArrangement arrangement) noexcept;

} // namespace vynaudiofilterhost::vst3
