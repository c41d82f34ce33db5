#include "vynhost/FilterPlan.h"

#include "vynhost/AutomationFile.h"
#include "vynhost/ParameterTable.h"
#include "vynhost/PresetNames.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/StateFile.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

// A failure of `find` as one of the option and of the plug-in, which has nothing of the kind.
template <class Find>
auto FindFor(char const* option, RenderRequest const& request, Find const& find) {
    try {
        return find();
    } catch (CommandError const& error) {
        throw CommandError(error.GetStatus(), CommandError::Subject::kPlugin, request.modulePath,
                           std::string(option) + ": " + error.what());
    }
}

// The state comes twice: to most plug-ins it belongs before anything else is set up, and some take up what is in it
// only when it reaches them while they run.
FilterStep PlanState(AudioFilter& filter, std::string const& path) {
    StateFile file(path);
    file.Read(filter);
    file.Load(filter);
    return [file](AudioFilter& prepared) { file.Load(prepared); };
}

FilterStep PlanPreset(AudioFilter& filter, RenderRequest const& request) {
    NameLookup const presets("preset", ReadPresetNames(filter));
    int const index = FindFor("--preset", request, [&] { return presets.Find(*request.preset); });
    auto const* const exchange = dynamic_cast<vynaudiofilterhost::IPresetExchange const*>(&filter);
    if (exchange && !exchange->CanSelectFactoryPreset(index))
        throw std::runtime_error("--preset: the plug-in names its preset " + std::to_string(index) + " \"" +
                                 presets.GetNames()[static_cast<std::size_t>(index)] +
                                 "\", but gives no way to select it");
    return [index](AudioFilter& prepared) { prepared.SetFactoryPreset(index); };
}

FilterStep PlanSettings(ParameterTable& table, RenderRequest const& request) {
    std::vector<std::pair<int, ParameterValue>> values;
    for (ParameterSetting const& setting : request.settings)
        values.push_back(FindFor("--set", request, [&] { return table.Read(setting.parameter, setting.value); }));
    return [values](AudioFilter& prepared) {
        for (auto const& [parameter, value] : values)
            prepared.SetParameter(parameter, value.normalized);
    };
}

struct TimedValue {
    double seconds;
    ParameterValue value;
};

AutomationCurve MakeCurve(ParameterScale const& scale, std::vector<TimedValue> values, double sampleRate) {
    std::ranges::stable_sort(values, {}, &TimedValue::seconds);
    std::vector<AutomationPoint> points;
    points.reserve(values.size());
    for (TimedValue const& timed : values)
        points.push_back({std::llround(timed.seconds * sampleRate), timed.value});
    return {std::move(points), scale.HasSteps(), [scale](double display) { return scale.Normalize(display); }};
}

AutomationPlayer PlanAutomation(ParameterTable& table, AutomationFile const& file, double sampleRate) {
    std::map<int, std::vector<TimedValue>> values;
    for (AutomationEntry const& entry : file.GetEntries()) {
        try {
            auto const [parameter, value] = table.Read(entry.parameter, entry.value);
            values[parameter].push_back({entry.seconds, value});
        } catch (CommandError const& error) {
            throw file.MakeError(entry, error.GetStatus(), error.what());
        }
    }
    AutomationPlayer player;
    for (auto& [parameter, ofParameter] : values)
        player.Add(parameter, MakeCurve(table.GetScale(parameter), std::move(ofParameter), sampleRate));
    return player;
}

} // namespace

FilterPlan MakeFilterPlan(AudioFilter& filter, RenderRequest const& request, AutomationFile const& automation,
                          double sampleRate) {
    FilterPlan plan;
    if (request.statePath)
        plan.preparations.push_back(PlanState(filter, *request.statePath));
    if (request.preset)
        plan.preparations.push_back(PlanPreset(filter, request));
    if (request.settings.empty() && !request.automationPath)
        return plan;
    ParameterTable table(filter);
    if (!request.settings.empty())
        plan.preparations.push_back(PlanSettings(table, request));
    plan.automation = PlanAutomation(table, automation, sampleRate);
    plan.notes = table.GetNotes();
    if (request.automationPath && automation.GetEntries().empty())
        plan.notes.emplace_back("the automation file holds no points");
    return plan;
}

} // namespace vynhost
