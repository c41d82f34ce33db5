#include "vynhost/DoctorStateStep.h"

#include "vynhost/DoctorReport.h"
#include "vynhost/NumberText.h"
#include "vynhost/OfflineRenderer.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/StringUtils.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynaudiofilterhost::IPresetExchange;
using vynaudiofilterhost::PresetData;

namespace {

/// What a filter keeps of itself: its settings, and the values that it shows.
struct Snapshot {
    vyncore::proplist::PropList settings;
    vyncore::proplist::PropList again; ///< the settings, saved once more
    std::vector<float> values;
    bool isWhole = true;
};

void Save(AudioFilter const& filter, vyncore::proplist::PropList& list) {
    PresetData preset(list);
    filter.SaveSettings(preset);
}

bool AreEqual(vyncore::proplist::PropList& left, vyncore::proplist::PropList& right) {
    return PresetData(left) == PresetData(right);
}

void Take(AudioFilter const& filter, Snapshot& snapshot) {
    Save(filter, snapshot.settings);
    Save(filter, snapshot.again);
    for (int index = 0; index < filter.GetParameterCount(); ++index)
        snapshot.values.push_back(filter.GetParameter(index));
    auto const* const exchange = dynamic_cast<IPresetExchange const*>(&filter);
    PresetData const preset(snapshot.settings);
    snapshot.isWhole = !preset.IsEmpty() && (!exchange || exchange->IsStateWhole(preset));
}

// A block of silence follows the step: some plug-ins take up new values when they process alone.
Snapshot TakeAfter(AudioFilter& filter, FilterStep const& step) {
    Snapshot snapshot;
    RenderSetup setup{.track = {.file = UsualLayout(2)}, .sampleRate = 48000.0, .blockSize = 512};
    setup.preparations = {step};
    setup.prepared = [&](AudioFilter& prepared) { Take(prepared, snapshot); };
    OfflineRenderer const renderer(filter, std::move(setup));
    return snapshot;
}

bool IsUsers(AudioFilter& filter, int index) {
    auto const info = filter.GetParameterInfo(index);
    return !info || (info->CanBeAutomated() && info->IsExposed());
}

// Each to one end of its range, the same ones every time: values in between needn't be any of a parameter with steps,
// and plug-ins round them at their own time.
void SetToEnds(AudioFilter& filter) {
    std::uint32_t number = 1;
    for (int index = 0; index < filter.GetParameterCount(); ++index) {
        number = number * 1664525U + 1013904223U;
        if (IsUsers(filter, index))
            filter.SetParameter(index, static_cast<float>(number >> 31));
    }
}

/// A parameter that a state doesn't bring back.
struct Loss {
    int index;
    float was;
    float now;
};

/// A state on its way from one instance of a plug-in to another.
struct Trip {
    boost::intrusive_ptr<AudioFilter> last; ///< that it has come to
    Snapshot saved = {};
    Snapshot loaded = {};
    bool isTaken = false;

    std::vector<Loss> ListLosses(float tolerance) const {
        std::vector<Loss> losses;
        for (std::size_t index = 0; index < std::min(saved.values.size(), loaded.values.size()); ++index) {
            if (!(std::abs(saved.values[index] - loaded.values[index]) <= tolerance))
                losses.push_back({static_cast<int>(index), saved.values[index], loaded.values[index]});
        }
        return losses;
    }
};

bool Load(AudioFilter& filter, Snapshot& saved) {
    return filter.LoadSettings(PresetData(saved.settings));
}

Trip Travel(PluginSelection const& plugin, FilterStep const& change) {
    Trip trip{.last = plugin.CreateFilter()};
    trip.saved = TakeAfter(*trip.last, change);
    if (!trip.saved.isWhole)
        return trip;
    trip.last.reset();
    trip.last = plugin.CreateFilter();
    trip.isTaken = Load(*trip.last, trip.saved);
    // Some take up what is in a state only when it reaches them while they run.
    trip.loaded =
        TakeAfter(*trip.last, [&](AudioFilter& filter) { trip.isTaken = Load(filter, trip.saved) && trip.isTaken; });
    return trip;
}

// Of a parameter that goes round, such as a hue or an angle, both ends are one value: it is there in between.
std::vector<Loss> ListLosses(PluginSelection const& plugin, Trip const& trip) {
    constexpr float kTolerance = 1e-6f;
    constexpr float kRoughly = 1e-3f;
    constexpr float kBetween = 0.25f;
    std::vector<Loss> losses = trip.ListLosses(kTolerance);
    if (losses.empty())
        return losses;
    std::vector<Loss> const again = Travel(plugin, [&](AudioFilter& filter) {
                                        for (Loss const& loss : losses)
                                            filter.SetParameter(loss.index, kBetween);
                                    }).ListLosses(kRoughly);
    std::erase_if(losses, [&](Loss const& loss) {
        return std::abs(loss.was - loss.now) == 1.0f &&
               std::ranges::find(again, loss.index, &Loss::index) == again.end();
    });
    return losses;
}

void TellLosses(AudioFilter& filter, std::vector<Loss> const& losses, DoctorStep& step) {
    if (losses.empty())
        return;
    Loss const& loss = losses.front();
    auto const info = filter.GetParameterInfo(loss.index);
    step.Misbehave("parameter " + std::to_string(loss.index) +
                   (info ? " (" + vyncore::string::UTF16to8(info->GetName()) + ")" : std::string()) +
                   " comes back as " + WriteNumber(loss.now) + " and was " + WriteNumber(loss.was) +
                   (losses.size() > 1 ? ", and " + std::to_string(losses.size() - 1) + " more" : ""));
}

} // namespace

void ExamineState(PluginSelection const& plugin, DoctorStep& step) {
    Trip trip = Travel(plugin, SetToEnds);
    if (!trip.saved.isWhole && trip.saved.values.empty())
        return step.Skip("has nothing to be kept");
    if (!trip.saved.isWhole)
        return step.Misbehave("gives no state");
    if (!trip.isTaken)
        return step.Misbehave("refuses its own state");
    if (trip.saved.values.size() != trip.loaded.values.size())
        step.Misbehave("has another number of parameters when its state is loaded");
    TellLosses(*trip.last, ListLosses(plugin, trip), step);
    if (!AreEqual(trip.saved.settings, trip.saved.again))
        step.Note("its state is another each time that it is saved");
    else if (!AreEqual(trip.saved.settings, trip.loaded.settings))
        step.Misbehave("its state isn't what was loaded when it is saved again");
}

} // namespace vynhost
