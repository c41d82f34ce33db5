#include "vynaudiofilterhost/VST3/src/VST3SpeakerTables.h"

#include "vynmediatypes/AudioChannelDescription.h"

#include <cstddef>
#include <iterator>

namespace vynaudiofilterhost::vst3 {

namespace {

using Label = vynmediatypes::AudioChannelDescription::Label;
using Channel = vynmediatypes::AudioChannelDescription;

// By bit. The bits above have no label: the bottom speakers behind the front and the higher ambisonic orders.
constexpr Label kLabels[] = {
    Channel::kLeft,                  // L
    Channel::kRight,                 // R
    Channel::kCenter,                // C
    Channel::kLowFrequency,          // Lfe
    Channel::kLeftSurround,          // Ls
    Channel::kRightSurround,         // Rs
    Channel::kLeftOfCenter,          // Lc
    Channel::kRightOfCenter,         // Rc
    Channel::kCenterSurround,        // S
    Channel::kSideLeft,              // Sl
    Channel::kSideRight,             // Sr
    Channel::kTopCenter,             // Tc
    Channel::kTopFrontLeft,          // Tfl
    Channel::kTopFrontCenter,        // Tfc
    Channel::kTopFrontRight,         // Tfr
    Channel::kTopRearLeft,           // Trl
    Channel::kTopRearCenter,         // Trc
    Channel::kTopRearRight,          // Trr
    Channel::kLowFrequency2,         // Lfe2
    Channel::kMono,                  // M
    Channel::kAmbisonic0,            // ACN0
    Channel::kAmbisonic1,            // ACN1
    Channel::kAmbisonic2,            // ACN2
    Channel::kAmbisonic3,            // ACN3
    Channel::kTopSideLeft,           // Tsl
    Channel::kTopSideRight,          // Tsr
    Channel::kLeftOfCenterSurround,  // Lcs
    Channel::kRightOfCenterSurround, // Rcs
    Channel::kBottomFrontLeft,       // Bfl
    Channel::kBottomFrontCenter,     // Bfc
    Channel::kBottomFrontRight,      // Bfr
    Channel::kProximityLeft,         // Pl
    Channel::kProximityRight,        // Pr
};

struct NamedArrangement {
    Steinberg::Vst::SpeakerArrangement arrangement;
    std::u16string_view name;
};

constexpr NamedArrangement kNames[] = {
    {0x80000, u"Mono"},
    {0x3, u"Stereo"},
    {0x30, u"Stereo (Ls Rs)"},
    {0xC0, u"Stereo (Lc Rc)"},
    {0x600, u"Stereo (Sl Sr)"},
    {0xC, u"Stereo (C LFE)"},
    {0x5000, u"Stereo (Tfl Tfr)"},
    {0x3000000, u"Stereo (Tsl Tsr)"},
    {0x28000, u"Stereo (Trl Trr)"},
    {0x50000000, u"Stereo (Bfl Bfr)"},
    {0x7, u"LRC"},
    {0x103, u"LRS"},
    {0xF, u"LRC+LFE"},
    {0x10B, u"LRS+LFE"},
    {0x107, u"LRCS"},
    {0x33, u"Quadro"},
    {0x10F, u"LRCS+LFE"},
    {0x37, u"5.0"},
    {0x3B, u"Quadro+LFE"},
    {0x3F, u"5.1"},
    {0x137, u"6.0 Cine"},
    {0x633, u"6.0 Music"},
    {0x13F, u"6.1 Cine"},
    {0x63B, u"6.1 Music"},
    {0xF7, u"7.0 Cine (SDDS)"},
    {0x637, u"7.0 Music (Dolby)"},
    {0xFF, u"7.1 Cine (SDDS)"},
    {0x63F, u"7.1 Music (Dolby)"},
    {0x93F, u"7.1 Cine Top Center"},
    {0x213F, u"7.1 Cine Center High"},
    {0x503F, u"7.1 Cine Front High"},
    {0x300003F, u"7.1 Cine Side High"},
    {0xC00003F, u"7.1 Cine Full Rear"},
    {0x18000003F, u"7.1 Proximity"},
    {0x1F7, u"8.0 Cine"},
    {0x737, u"8.0 Music"},
    {0x2D033, u"8.0 Cube"},
    {0x1FF, u"8.1 Cine"},
    {0x73F, u"8.1 Music"},
    {0x6F03F, u"10.2 Experimental"},
    {0x6F0FF, u"12.2"},
    {0x2D037, u"5.0.4"},
    {0x2D03F, u"5.1.4"},
    {0x300063F, u"9.1 Dolby Atmos"},
    {0x2D837, u"10.0 Auro-3D"},
    {0x2D83F, u"10.1 Auro-3D"},
    {0x2F837, u"11.0 Auro-3D"},
    {0x2F83F, u"11.1 Auro-3D"},
    {0x2FE37, u"13.0 Auro-3D"},
    {0x2FE3F, u"13.1 Auro-3D"},
    {0x2000703B, u"8.1 MPEG"},
    {0x2D637, u"7.0.4"},
    {0x2D63F, u"7.1.4"},
    {0x285002D633, u"14.0"},
    {0x7307FFFF, u"22.2"},
    {0xF00000, u"Ambi 1st-Order"},
    {0x7C000F00000, u"Ambi 2cd-Order"},
    {0x3FFC000F00000, u"Ambi 3rd-Order"},
};

} // namespace

std::optional<std::int32_t> SpeakerLabelTable::LabelFromBit(int bit) noexcept {
    if (bit < 0 || bit >= static_cast<int>(std::size(kLabels)))
        return std::nullopt;
    return kLabels[static_cast<std::size_t>(bit)];
}

std::optional<int> SpeakerLabelTable::BitFromLabel(std::int32_t label) noexcept {
    for (std::size_t bit = 0; bit < std::size(kLabels); ++bit) {
        if (kLabels[bit] == label)
            return static_cast<int>(bit);
    }
    return std::nullopt;
}

std::u16string_view ArrangementName(Steinberg::Vst::SpeakerArrangement arrangement) noexcept {
    for (NamedArrangement const& named : kNames) {
        if (named.arrangement == arrangement)
            return named.name;
    }
    return {};
}

} // namespace vynaudiofilterhost::vst3
