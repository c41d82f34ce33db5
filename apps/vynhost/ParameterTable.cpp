#include "vynhost/ParameterTable.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include <stdexcept>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

std::vector<std::string> ReadNames(AudioFilter& filter) {
    std::vector<std::string> names;
    int const count = filter.GetParameterCount();
    for (int index = 0; index < count; ++index) {
        auto const info = filter.GetParameterInfo(index);
        names.emplace_back(info ? vyncore::string::UTF16to8(info->GetName()) : std::string());
    }
    return names;
}

} // namespace

ParameterTable::ParameterTable(AudioFilter& filter) : mFilter(filter), mNames("parameter", ReadNames(filter)) {}

std::pair<int, ParameterValue> ParameterTable::Read(std::string const& nameOrIndex, std::string const& value) {
    int const parameter = mNames.Find(nameOrIndex);
    ParameterValue const read = GetScale(parameter).Read(value);
    Note(parameter, value, read);
    return {parameter, read};
}

void ParameterTable::Note(int parameter, std::string const& text, ParameterValue const& value) {
    ParameterScale const& scale = GetScale(parameter);
    if (mRead.insert(parameter).second && !scale.CanBeAutomated())
        mNotes.push_back('"' + scale.GetName() + "\" is not automatable: the plug-in may not heed its values");
    if (value.betweenSteps && mMoved.insert(parameter).second)
        mNotes.push_back('"' + scale.GetName() + "\" goes in steps, values become the nearest: " + text + " became " +
                         scale.Describe(value.normalized));
}

ParameterScale const& ParameterTable::GetScale(int parameter) {
    if (auto const known = mScales.find(parameter); known != mScales.end())
        return known->second;
    auto const info = mFilter.GetParameterInfo(parameter);
    if (!info)
        throw std::runtime_error("the plug-in tells nothing of its parameter " + std::to_string(parameter));
    return mScales.emplace(parameter, ParameterScale(info)).first->second;
}

} // namespace vynhost
