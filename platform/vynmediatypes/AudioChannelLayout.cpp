#include "vynmediatypes/AudioChannelLayout.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>

namespace vynmediatypes {
namespace {

using Channel = AudioChannelDescription;

struct LabelName {
    Channel::Label label;
    char16_t const* name;
};

constexpr LabelName kLabelNames[] = {
    {Channel::kMono, u"M"},
    {Channel::kLeft, u"L"},
    {Channel::kRight, u"R"},
    {Channel::kCenter, u"C"},
    {Channel::kLowFrequency, u"LFE"},
    {Channel::kLeftSurround, u"Ls"},
    {Channel::kRightSurround, u"Rs"},
    {Channel::kCenterSurround, u"Cs"},
    {Channel::kLeftOfCenter, u"Lc"},
    {Channel::kRightOfCenter, u"Rc"},
    {Channel::kSideLeft, u"Sl"},
    {Channel::kSideRight, u"Sr"},
    {Channel::kTopCenter, u"Tc"},
    {Channel::kTopFrontLeft, u"Tfl"},
    {Channel::kTopFrontRight, u"Tfr"},
    {Channel::kTopFrontCenter, u"Tfc"},
    {Channel::kTopRearLeft, u"Trl"},
    {Channel::kTopRearRight, u"Trr"},
    {Channel::kTopRearCenter, u"Trc"},
    {Channel::kTopSideLeft, u"Tsl"},
    {Channel::kTopSideRight, u"Tsr"},
    {Channel::kLeftOfCenterSurround, u"Lcs"},
    {Channel::kRightOfCenterSurround, u"Rcs"},
    {Channel::kLowFrequency2, u"LFE2"},
    {Channel::kAmbisonic0, u"ACN0"},
    {Channel::kAmbisonic1, u"ACN1"},
    {Channel::kAmbisonic2, u"ACN2"},
    {Channel::kAmbisonic3, u"ACN3"},
    {Channel::kBottomFrontLeft, u"Bfl"},
    {Channel::kBottomFrontCenter, u"Bfc"},
    {Channel::kBottomFrontRight, u"Bfr"},
    {Channel::kProximityLeft, u"Pl"},
    {Channel::kProximityRight, u"Pr"},
    {Channel::kAmbisonic, u"Ambisonic"},
};

AudioChannelLayout MakeLayout(std::initializer_list<Channel::Label> labels) {
    AudioChannelLayout layout;
    for (Channel::Label const label : labels)
        layout.emplace_back(label);
    return layout;
}

struct NamedLayout {
    AudioChannelLayout layout;
    char16_t const* name;
};

std::vector<NamedLayout> const& NamedLayouts() {
    using enum Channel::Label;
    static std::vector<NamedLayout> const& layouts = *new std::vector<NamedLayout>{
        {CreateMonoChannelLayout(), u"Mono"},
        {CreateStereoChannelLayout(), u"Stereo"},
        {MakeLayout({kLeft, kRight, kLeftSurround, kRightSurround}), u"Quadro"},
        {MakeLayout({kLeft, kRight, kCenter, kLeftSurround, kRightSurround}), u"5.0"},
        {CreateSurround51ChannelLayout(), u"5.1"},
        {CreateSurround71ChannelLayout(), u"7.1"},
    };
    return layouts;
}

} // namespace

AudioChannelLayout CreateMonoChannelLayout() {
    return MakeLayout({Channel::kMono});
}

AudioChannelLayout CreateStereoChannelLayout() {
    return MakeLayout({Channel::kLeft, Channel::kRight});
}

AudioChannelLayout CreateSurround51ChannelLayout() {
    return MakeLayout({Channel::kLeft, Channel::kRight, Channel::kCenter, Channel::kLowFrequency,
                       Channel::kLeftSurround, Channel::kRightSurround});
}

AudioChannelLayout CreateSurround71ChannelLayout() {
    AudioChannelLayout layout = CreateSurround51ChannelLayout();
    layout.emplace_back(Channel::kSideLeft);
    layout.emplace_back(Channel::kSideRight);
    return layout;
}

vyncore::UString AudioChannelDescriptionName(std::int32_t label) {
    auto const found = std::find_if(std::begin(kLabelNames), std::end(kLabelNames),
                                    [label](LabelName const& entry) { return entry.label == label; });
    return found != std::end(kLabelNames) ? found->name : vyncore::string::AsciiToUTF16(std::to_string(label));
}

vyncore::UString AudioChannelLayoutDescription(AudioChannelLayout const& layout) {
    for (NamedLayout const& named : NamedLayouts()) {
        if (named.layout == layout)
            return named.name;
    }
    vyncore::UString text;
    for (Channel const channel : layout) {
        if (!text.empty())
            text += u' ';
        text += AudioChannelDescriptionName(channel.GetLabel());
    }
    return text;
}

} // namespace vynmediatypes
