#include "vynaudiofilterhost/VST3/src/VST3SpeakerArrangement.h"

#include "vynaudiofilterhost/VST3/src/VST3SpeakerTables.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::Vst::SpeakerArrangement;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

struct ArrangementOfCount {
    std::size_t channelCount;
    SpeakerArrangement arrangement;
};

constexpr SpeakerArrangement kFirstOrder = 0xF00000;
constexpr SpeakerArrangement kThirdOrder = 0x3FFC000F00000;

constexpr ArrangementOfCount kAmbisonics[] = {{4, kFirstOrder}, {9, 0x7C000F00000}, {16, kThirdOrder}};

constexpr ArrangementOfCount kRequested[] = {{1, 0x80000}, {2, 0x3}, {4, 0x33}, {6, 0x3F}, {8, 0xFF}};

std::size_t AmbisonicChannelCount(SpeakerArrangement arrangement, unsigned sdkVersion) {
    if (arrangement == kThirdOrder && sdkVersion < kThirdOrderAmbisonicSDKVersion)
        return 0;
    for (ArrangementOfCount const& order : kAmbisonics) {
        if (order.arrangement == arrangement)
            return order.channelCount;
    }
    return 0;
}

bool IsFirstOrderByComponents(AudioChannelLayout const& layout) {
    static constexpr AudioChannelDescription kComponents[] = {
        AudioChannelDescription(AudioChannelDescription::kAmbisonic0),
        AudioChannelDescription(AudioChannelDescription::kAmbisonic1),
        AudioChannelDescription(AudioChannelDescription::kAmbisonic2),
        AudioChannelDescription(AudioChannelDescription::kAmbisonic3)};
    return std::equal(layout.begin(), layout.end(), std::begin(kComponents), std::end(kComponents));
}

bool IsAmbisonic(AudioChannelLayout const& layout) {
    AudioChannelDescription const ambisonic(AudioChannelDescription::kAmbisonic);
    return std::all_of(layout.begin(), layout.end(), [&](auto channel) { return channel == ambisonic; });
}

template <std::size_t N>
std::optional<SpeakerArrangement> FindByCount(ArrangementOfCount const (&table)[N], std::size_t channelCount) {
    for (ArrangementOfCount const& row : table) {
        if (row.channelCount == channelCount)
            return row.arrangement;
    }
    return std::nullopt;
}

std::optional<SpeakerArrangement> ArrangementFromLayout(AudioChannelLayout const& layout) {
    if (IsFirstOrderByComponents(layout))
        return kFirstOrder;
    if (IsAmbisonic(layout)) {
        if (auto const arrangement = FindByCount(kAmbisonics, layout.size()))
            return arrangement;
    }
    return FindByCount(kRequested, layout.size());
}

vyncore::UString BusName(vyncore::UString const& name, SpeakerArrangement arrangement,
                         AudioChannelLayout const& labels) {
    if (!name.empty())
        return name;
    std::u16string_view const known = ArrangementName(arrangement);
    return known.empty() ? vynmediatypes::AudioChannelLayoutDescription(labels) : vyncore::UString(known);
}

} // namespace

void LabelsFromArrangement(SpeakerArrangement arrangement, std::vector<AudioChannelDescription>& labels) {
    labels.clear();
    for (SpeakerArrangement rest = arrangement; rest != 0; rest &= rest - 1) {
        if (auto const label = SpeakerLabelTable::LabelFromBit(std::countr_zero(rest)))
            labels.emplace_back(*label);
    }
    if (labels.empty())
        labels.assign(static_cast<std::size_t>(std::popcount(arrangement)), AudioChannelDescription(0));
}

void AddBusForArrangement(SpeakerArrangement arrangement, int busType, vyncore::UString const& name,
                          unsigned sdkVersion, std::vector<AudioBusDescription>& buses) {
    AudioChannelLayout labels(AmbisonicChannelCount(arrangement, sdkVersion),
                              AudioChannelDescription(AudioChannelDescription::kAmbisonic));
    if (labels.empty())
        LabelsFromArrangement(arrangement, labels);
    if (labels.empty())
        return;
    auto const type = busType == 0 ? AudioBusDescription::kTypeMain : AudioBusDescription::kTypeSideChain;
    vyncore::UString const shownName = BusName(name, arrangement, labels);
    buses.emplace_back(shownName, std::move(labels), type);
}

void ArrangementsFromLayouts(std::vector<AudioChannelLayout> const& layouts,
                             std::vector<SpeakerArrangement>& arrangements) {
    arrangements.clear();
    for (AudioChannelLayout const& layout : layouts) {
        if (auto const arrangement = ArrangementFromLayout(layout))
            arrangements.push_back(*arrangement);
    }
}

} // namespace vynaudiofilterhost::vst3
