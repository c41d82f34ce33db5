#include "vynhost/ListCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/DescriptorRow.h"
#include "vynhost/JSONText.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/TechnologyName.h"

#include "vyncore/strings/StringUtils.h"

namespace vynhost {

using vyncore::string::UTF16to8;

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
        table.AddRow({UTF16to8(filter->GetName()), UTF16to8(filter->GetVendorString()),
                      UTF16to8(filter->GetCategoryName()), TechnologyName(filter->GetLocator().GetTechnologyType()),
                      DescribeKind(*filter), UTF16to8(filter->GetUniqueID())});
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
