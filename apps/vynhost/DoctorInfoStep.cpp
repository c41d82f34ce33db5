#include "vynhost/DoctorInfoStep.h"

#include "vynhost/CommandError.h"
#include "vynhost/DoctorReport.h"
#include "vynhost/ParameterFacts.h"
#include "vynhost/PluginFacts.h"
#include "vynhost/PluginSelection.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace vynhost {

namespace {

using Facts = std::vector<ParameterFacts>;

std::string NameOf(ParameterFacts const& parameter) {
    std::string const number = std::to_string(parameter.index);
    return parameter.name.empty() ? number : number + " (" + parameter.name + ")";
}

// How many of the parameters are so, and the first of them.
template <class Matches>
std::string CountParameters(Facts const& parameters, Matches const& matches) {
    auto const first = std::ranges::find_if(parameters, matches);
    if (first == parameters.end())
        return {};
    auto const count = std::ranges::count_if(parameters, matches);
    return (count == 1 ? "parameter " : std::to_string(count) + " parameters, such as ") + NameOf(*first);
}

void ExamineParameters(Facts const& parameters, DoctorStep& step) {
    std::string const wild = CountParameters(parameters, [](ParameterFacts const& parameter) {
        return !(parameter.value >= 0.0f && parameter.value <= 1.0f);
    });
    if (!wild.empty())
        step.Misbehave("values beyond 0 to 1, or no numbers: " + wild);
    std::string const boundless = CountParameters(parameters, [](ParameterFacts const& parameter) {
        return !std::isfinite(parameter.low) || !std::isfinite(parameter.high);
    });
    if (!boundless.empty())
        step.Misbehave("ranges that are no numbers: " + boundless);
    std::string const nameless =
        CountParameters(parameters, [](ParameterFacts const& parameter) { return parameter.name.empty(); });
    if (!nameless.empty())
        step.Note("without a name: " + nameless);
    std::string const textless =
        CountParameters(parameters, [](ParameterFacts const& parameter) { return parameter.text.empty(); });
    if (!textless.empty())
        step.Note("without a text for its value: " + textless);
}

void ExamineCounts(PluginFacts const& facts, vynaudiofilterhost::AudioFilter& filter, DoctorStep& step) {
    auto const compare = [&](int before, int after, std::string const& what) {
        if (before != after)
            step.Misbehave("changes its number of " + what + " by itself, from " + std::to_string(before) + " to " +
                           std::to_string(after));
    };
    filter.Resume();
    filter.Suspend();
    compare(facts.parameters, filter.GetParameterCount(), "parameters");
    compare(facts.presets, filter.GetNumFactoryPresets(), "presets");
}

// There is one already.
void TryTwo(PluginSelection const& plugin, DoctorStep& step) {
    try {
        plugin.CreateFilter();
    } catch (CommandError const&) {
        step.Misbehave("can't be had twice at a time");
    }
}

} // namespace

void ExamineInfo(PluginSelection const& plugin, DoctorStep& step) {
    PluginFacts const facts = GatherFacts(plugin);
    if (facts.latency < 0)
        step.Misbehave("tells a latency of " + std::to_string(facts.latency) + " samples");
    if (facts.tail < -1)
        step.Misbehave("tells a tail of " + std::to_string(facts.tail) + " samples");
    if (facts.buses.inputs.empty() && facts.buses.outputs.empty())
        step.Misbehave("has no audio bus");
    auto const filter = plugin.CreateFilter();
    filter->SetSampleRate(kFactsSampleRate);
    filter->SetBlockSize(512);
    TryTwo(plugin, step);
    ExamineParameters(GatherParameters(*filter), step);
    ExamineCounts(facts, *filter, step);
}

} // namespace vynhost
