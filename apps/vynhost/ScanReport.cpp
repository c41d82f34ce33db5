#include "vynhost/ScanReport.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/JSONText.h"
#include "vynhost/TechnologyName.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vynhost {

using vyncore::string::UTF16to8;

namespace {

constexpr std::array kVerdicts{"filed", "known", "banned", "refused", "vanished"};

char const* NameOf(ScanRow::Verdict verdict) {
    return kVerdicts[static_cast<std::size_t>(verdict)];
}

std::string FormatSeconds(double seconds) {
    std::array<char, 32> text;
    std::snprintf(text.data(), text.size(), "%.3f", seconds);
    return text.data();
}

std::string Summarize(ScanReport const& report) {
    std::string text;
    for (std::size_t i = 0; i < kVerdicts.size(); ++i) {
        auto const verdict = static_cast<ScanRow::Verdict>(i);
        auto const count = std::ranges::count(report.rows, verdict, &ScanRow::verdict);
        if (count > 0)
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + kVerdicts[i];
    }
    return (text.empty() ? "no plug-ins were found" : text) + ", in " + FormatSeconds(report.seconds) + " s\n";
}

} // namespace

std::string FormatJSON(ScanReport const& report) {
    auto modules = nlohmann::ordered_json::array();
    for (ScanRow const& row : report.rows) {
        nlohmann::ordered_json document{{"path", UTF16to8(row.module.GetPath())},
                                        {"technology", TechnologyName(row.module.GetTechnologyType())},
                                        {"verdict", NameOf(row.verdict)},
                                        {"reason", nullptr},
                                        {"seconds", row.seconds},
                                        {"filters", row.filters}};
        if (!row.reason.empty())
            document["reason"] = row.reason;
        modules.push_back(std::move(document));
    }
    return ToText({{"seconds", report.seconds}, {"modules", std::move(modules)}});
}

std::string FormatTable(ScanReport const& report) {
    ColumnTable table({{"verdict"}, {"seconds", true}, {"plug-ins", true}, {"module"}, {"reason"}});
    for (ScanRow const& row : report.rows)
        table.AddRow({NameOf(row.verdict), row.seconds > 0.0 ? FormatSeconds(row.seconds) : "",
                      row.filters.empty() ? "" : std::to_string(row.filters.size()), UTF16to8(row.module.GetPath()),
                      row.reason});
    return (report.rows.empty() ? "" : table.Finish()) + Summarize(report);
}

} // namespace vynhost
