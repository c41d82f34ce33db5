#include "vynhost/ListCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/DescriptorRow.h"
#include "vynhost/JSONText.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"

namespace vynhost {

namespace {

std::string FormatJSON(KnownFilters const& filters) {
    auto list = nlohmann::ordered_json::array();
    for (auto const& filter : filters) {
        list.push_back(ToRow(*filter));
        list.back()["enabled"] = IsEnabled(*filter);
    }
    return ToText(list);
}

std::string DescribeKind(vynaudiofilterhost::AudioFilterDescriptor const& filter) {
    std::string kind = filter.IsSynth() ? "instrument" : "";
    auto const add = [&](bool applies, char const* word) {
        if (applies)
            kind += (kind.empty() ? "" : ", ") + std::string(word);
    };
    add(filter.GetSupportsMono(), "mono");
    add(filter.GetSupportsStereo(), "stereo");
    add(!IsEnabled(filter), "disabled");
    return kind;
}

std::string FormatTable(KnownFilters const& filters) {
    if (filters.empty())
        return "no plug-ins are known; vynhost scan looks for them\n";
    ColumnTable table({{"name"}, {"vendor"}, {"category"}, {"format"}, {"kind"}, {"id"}});
    for (auto const& filter : filters) {
        nlohmann::ordered_json const row = ToRow(*filter);
        auto const text = [&](char const* key) { return row.at(key).get<std::string>(); };
        table.AddRow({text("name"), text("vendor"), text("categoryName"), text("technology"), DescribeKind(*filter),
                      text("id")});
    }
    return table.Finish();
}

} // namespace

std::string RunList(bool json) {
    Session const session;
    LoadStoredFiles();
    KnownFilters const filters = ListKnownFilters();
    return json ? FormatJSON(filters) : FormatTable(filters);
}

} // namespace vynhost
