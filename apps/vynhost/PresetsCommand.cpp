#include "vynhost/PresetsCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/JSONText.h"
#include "vynhost/OneLine.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/PresetNames.h"
#include "vynhost/Session.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include <vector>

namespace vynhost {

namespace {

std::string FormatJSON(std::vector<std::string> const& names) {
    auto list = nlohmann::ordered_json::array();
    for (std::string const& name : names)
        list.push_back({{"index", list.size()}, {"name", name}});
    return ToText(list);
}

std::string FormatTable(std::string const& title, std::vector<std::string> const& names) {
    if (names.empty())
        return OnOneLine(title) + "\n  no presets\n";
    ColumnTable table({{"index", true}, {"name"}});
    for (std::size_t index = 0; index < names.size(); ++index)
        table.AddRow({std::to_string(index), names[index]});
    return OnOneLine(title) + '\n' + table.Finish();
}

} // namespace

std::string RunPresets(PluginRequest const& request) {
    Session const session;
    return CallPlugin(ExitStatus::kPluginRefused, request.modulePath, [&] {
        using vyncore::string::UTF16to8;
        PluginSelection const plugin(request.modulePath, request.classID);
        auto const filter = plugin.CreateFilter();
        std::vector<std::string> const names = ReadPresetNames(*filter);
        std::string const title = UTF16to8(filter->GetDisplayName()) + "  " + UTF16to8(filter->GetID());
        return request.json ? FormatJSON(names) : FormatTable(title, names);
    });
}

} // namespace vynhost
