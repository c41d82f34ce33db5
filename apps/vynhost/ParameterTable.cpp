#include "vynhost/ParameterTable.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include <stdexcept>
#include <vector>

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

ParameterScale const& ParameterTable::GetScale(int parameter) {
    if (auto const known = mScales.find(parameter); known != mScales.end())
        return known->second;
    auto const info = mFilter.GetParameterInfo(parameter);
    if (!info)
        throw std::runtime_error("the plug-in tells nothing of its parameter " + std::to_string(parameter));
    return mScales.emplace(parameter, ParameterScale(info)).first->second;
}

} // namespace vynhost
