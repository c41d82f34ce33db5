#include "vynhost/ParameterFacts.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IParameterIdentity.h"
#include "vyncore/strings/StringUtils.h"

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynaudiofilterhost::AudioFilterParameterInfo;
using vyncore::string::UTF16to8;

namespace {

std::optional<std::uint32_t> FindID(AudioFilterParameterInfo const& info) {
    auto const* const identity = dynamic_cast<vynaudiofilterhost::IParameterIdentity const*>(&info);
    return identity ? std::optional(identity->GetParameterID()) : std::nullopt;
}

} // namespace

ParameterFacts GatherParameter(AudioFilter& filter, int index) {
    ParameterFacts facts;
    facts.index = index;
    facts.value = facts.display = filter.GetParameter(index);
    facts.text = UTF16to8(filter.GetParameterString(index));
    auto const info = filter.GetParameterInfo(index);
    if (!info)
        return facts;
    facts.id = FindID(*info);
    facts.name = UTF16to8(info->GetName());
    facts.label = UTF16to8(info->GetLabel());
    facts.low = info->FromNormalized(0.0f);
    facts.high = info->FromNormalized(1.0f);
    facts.steps = info->GetStepCount();
    facts.display = info->FromNormalized(facts.value);
    facts.exposed = info->IsExposed();
    facts.automatable = info->CanBeAutomated();
    return facts;
}

std::vector<ParameterFacts> GatherParameters(AudioFilter& filter) {
    std::vector<ParameterFacts> parameters;
    int const count = filter.GetParameterCount();
    for (int index = 0; index < count; ++index)
        parameters.push_back(GatherParameter(filter, index));
    return parameters;
}

} // namespace vynhost
