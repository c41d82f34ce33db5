#include "vynhost/FilterPlan.h"

#include "vynhost/AutomationFile.h"
#include "vynhost/ParameterTable.h"
#include "vynhost/PresetNames.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/StateFile.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

// A failure of `find` as one of the option.
template <class Find>
auto FindFor(char const* option, Find const& find) {
    try {
        return find();
    } catch (CommandError const& error) {
        throw CommandError::WrongUsage(std::string(option) + ": " + error.what());
    }
}

// The state comes twice: to most plug-ins it belongs before anything else is set up, and some take up what is in it
// only when it reaches them while they run.
FilterStep PlanState(AudioFilter& filter, std::string const& path, std::vector<std::string>& notes) {
    StateFile const file(path);
    notes = file.Load(filter);
    return [file](AudioFilter& prepared) { file.Load(prepared); };
}

FilterStep PlanPreset(AudioFilter& filter, std::string const& preset) {
    int const index = FindFor("--preset", [&] { return NameLookup("preset", ReadPresetNames(filter)).Find(preset); });
    return [index](AudioFilter& prepared) { prepared.SetFactoryPreset(index); };
}

FilterStep PlanSettings(ParameterTable& table, std::vector<ParameterSetting> const& settings) {
    std::vector<std::pair<int, float>> values;
    for (ParameterSetting const& setting : settings)
        values.push_back(FindFor("--set", [&] {
            int const parameter = table.Find(setting.parameter);
            return std::pair(parameter, table.GetScale(parameter).Read(setting.value).normalized);
        }));
    return [values](AudioFilter& prepared) {
        for (auto const& [parameter, value] : values)
            prepared.SetParameter(parameter, value);
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
            int const parameter = table.Find(entry.parameter);
            values[parameter].push_back({entry.seconds, table.GetScale(parameter).Read(entry.value)});
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
        plan.preparations.push_back(PlanState(filter, *request.statePath, plan.notes));
    if (request.preset)
        plan.preparations.push_back(PlanPreset(filter, *request.preset));
    if (request.settings.empty() && !request.automationPath)
        return plan;
    ParameterTable table(filter);
    if (!request.settings.empty())
        plan.preparations.push_back(PlanSettings(table, request.settings));
    plan.automation = PlanAutomation(table, automation, sampleRate);
    if (request.automationPath && automation.GetEntries().empty())
        plan.notes.emplace_back("the automation file holds no points");
    return plan;
}

} // namespace vynhost
