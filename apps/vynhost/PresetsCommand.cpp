#include "vynhost/PresetsCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/JSONText.h"
#include "vynhost/OneLine.h"
#include "vynhost/PluginQuery.h"
#include "vynhost/PresetNames.h"

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
    return AskPlugin(request, [&](PluginSelection const& plugin) {
        auto const filter = plugin.CreateFilter();
        std::vector<std::string> const names = ReadPresetNames(*filter);
        return request.json ? FormatJSON(names) : FormatTable(GetTitle(*filter), names);
    });
}

} // namespace vynhost
