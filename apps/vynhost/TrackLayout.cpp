#include "vynhost/TrackLayout.h"

#include "vynhost/CommandError.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <sndfile.h>

namespace vynhost {

using vynmediatypes::AudioChannelDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

struct NamedLayout {
    char const* name;
    int channels; ///< whose usual layout it is
};

constexpr std::array kNamedLayouts{NamedLayout{"mono", 1}, NamedLayout{"stereo", 2}, NamedLayout{"5.1", 6},
                                   NamedLayout{"7.1", 8}};

struct SpeakerLabel {
    int speaker;
    AudioChannelDescription::Label label;
};

constexpr std::array kSpeakerLabels{
    SpeakerLabel{SF_CHANNEL_MAP_LEFT, AudioChannelDescription::kLeft},
    SpeakerLabel{SF_CHANNEL_MAP_RIGHT, AudioChannelDescription::kRight},
    SpeakerLabel{SF_CHANNEL_MAP_CENTER, AudioChannelDescription::kCenter},
    SpeakerLabel{SF_CHANNEL_MAP_FRONT_LEFT, AudioChannelDescription::kLeft},
    SpeakerLabel{SF_CHANNEL_MAP_FRONT_RIGHT, AudioChannelDescription::kRight},
    SpeakerLabel{SF_CHANNEL_MAP_FRONT_CENTER, AudioChannelDescription::kCenter},
    SpeakerLabel{SF_CHANNEL_MAP_REAR_CENTER, AudioChannelDescription::kCenterSurround},
    SpeakerLabel{SF_CHANNEL_MAP_REAR_LEFT, AudioChannelDescription::kLeftSurround},
    SpeakerLabel{SF_CHANNEL_MAP_REAR_RIGHT, AudioChannelDescription::kRightSurround},
    SpeakerLabel{SF_CHANNEL_MAP_LFE, AudioChannelDescription::kLowFrequency},
    SpeakerLabel{SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER, AudioChannelDescription::kLeftOfCenter},
    SpeakerLabel{SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER, AudioChannelDescription::kRightOfCenter},
    SpeakerLabel{SF_CHANNEL_MAP_SIDE_LEFT, AudioChannelDescription::kSideLeft},
    SpeakerLabel{SF_CHANNEL_MAP_SIDE_RIGHT, AudioChannelDescription::kSideRight},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_CENTER, AudioChannelDescription::kTopCenter},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_FRONT_LEFT, AudioChannelDescription::kTopFrontLeft},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_FRONT_RIGHT, AudioChannelDescription::kTopFrontRight},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_FRONT_CENTER, AudioChannelDescription::kTopFrontCenter},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_REAR_LEFT, AudioChannelDescription::kTopRearLeft},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_REAR_RIGHT, AudioChannelDescription::kTopRearRight},
    SpeakerLabel{SF_CHANNEL_MAP_TOP_REAR_CENTER, AudioChannelDescription::kTopRearCenter},
};

AudioChannelDescription LabelOfSpeaker(int speaker) {
    auto const found = std::ranges::find(kSpeakerLabels, speaker, &SpeakerLabel::speaker);
    return found == kSpeakerLabels.end() ? AudioChannelDescription() : AudioChannelDescription(found->label);
}

AudioChannelLayout MakeLayout(std::initializer_list<AudioChannelDescription::Label> labels) {
    AudioChannelLayout layout;
    for (AudioChannelDescription::Label const label : labels)
        layout.emplace_back(label);
    return layout;
}

} // namespace

std::string ListLayoutNames() {
    std::string names;
    for (NamedLayout const& named : kNamedLayouts)
        names += (names.empty() ? "" : ", ") + std::string(named.name);
    return names;
}

AudioChannelLayout LayoutOfName(std::string const& name) {
    auto const found =
        std::ranges::find_if(kNamedLayouts, [&name](NamedLayout const& named) { return named.name == name; });
    if (found == kNamedLayouts.end())
        throw CommandError::WrongUsage("there is no layout \"" + name + "\"; there are " + ListLayoutNames());
    return UsualLayout(found->channels);
}

AudioChannelLayout UsualLayout(int channels) {
    using enum AudioChannelDescription::Label;
    switch (channels) {
    case 1:
        return vynmediatypes::CreateMonoChannelLayout();
    case 2:
        return vynmediatypes::CreateStereoChannelLayout();
    case 4:
        return MakeLayout({kLeft, kRight, kLeftSurround, kRightSurround});
    case 6:
        return vynmediatypes::CreateSurround51ChannelLayout();
    case 8:
        return MakeLayout(
            {kLeft, kRight, kCenter, kLowFrequency, kLeftSurround, kRightSurround, kSideLeft, kSideRight});
    default:
        return {};
    }
}

AudioChannelLayout LayoutOfFile(AudioFormat const& format) {
    AudioChannelLayout layout = UsualLayout(format.channels);
    if (!layout.empty())
        return layout;
    layout.resize(static_cast<std::size_t>(format.channels));
    std::transform(format.speakers.begin(), format.speakers.end(), layout.begin(), LabelOfSpeaker);
    return layout;
}

} // namespace vynhost
