#include "vynhost/DoctorReport.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/JSONText.h"
#include "vynhost/OneLine.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <utility>

namespace vynhost {

namespace {

constexpr std::array kRowVerdicts{"fine", "misbehaves", "failed"};
constexpr std::array kStepVerdicts{"fine", "skipped", "misbehaves"};
constexpr std::array kStepMarks{"ok", "-", "BAD"};

char const* NameOf(DoctorRow::Verdict verdict) {
    return kRowVerdicts[static_cast<std::size_t>(verdict)];
}

std::string WriteFixed(double number, char const* format) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

// What is wrong comes first; what there is no cause to look into isn't told.
std::string JoinRemarks(DoctorRow const& row) {
    std::string text;
    for (auto const wanted : {DoctorStep::Verdict::kMisbehaves, DoctorStep::Verdict::kFine}) {
        for (char const* const name : kDoctorSteps) {
            auto const step = row.steps.find(name);
            if (step == row.steps.end() || step->second.verdict != wanted)
                continue;
            for (std::string const& remark : step->second.remarks)
                text += (text.empty() ? "" : "; ") + std::string(name) + ": " + remark;
        }
    }
    return text;
}

std::string MarkOf(DoctorRow const& row, char const* name) {
    auto const step = row.steps.find(name);
    return step == row.steps.end() ? "-" : kStepMarks[static_cast<std::size_t>(step->second.verdict)];
}

std::vector<std::string> MakeCells(DoctorRow const& row) {
    std::vector<std::string> cells{row.name.empty() ? std::filesystem::path(row.path).filename().string() : row.name,
                                   row.technology};
    for (char const* const name : kDoctorSteps)
        cells.push_back(MarkOf(row, name));
    cells.push_back(row.timesRealTime ? WriteFixed(*row.timesRealTime, "%.0f") : "");
    cells.push_back(JoinRemarks(row));
    return cells;
}

std::string Summarize(DoctorReport const& report) {
    auto const count = [&](DoctorRow::Verdict verdict) {
        return std::to_string(std::ranges::count(report.rows, verdict, &DoctorRow::GetVerdict));
    };
    std::string text = report.rows.empty()
                           ? "no plug-ins were found"
                           : count(DoctorRow::Verdict::kFine) + " fine, " + count(DoctorRow::Verdict::kMisbehaves) +
                                 " misbehave, " + count(DoctorRow::Verdict::kFailed) + " could not be examined";
    text += ", in " + WriteFixed(report.seconds, "%.1f") + " s";
    if (!report.passedOver.empty())
        text += "; passed over since banned: " + std::to_string(report.passedOver.size());
    return text + (report.interrupted ? "; interrupted\n" : "\n");
}

// A step that is left out for all of one reason is told of once.
std::string TellSkipped(DoctorReport const& report) {
    std::map<std::string, int> reasons;
    for (DoctorRow const& row : report.rows) {
        for (auto const& [name, step] : row.steps) {
            if (step.verdict == DoctorStep::Verdict::kSkipped && !step.remarks.empty())
                ++reasons[name + ": " + step.remarks.front()];
        }
    }
    std::string text;
    for (auto const& [reason, count] : reasons)
        text += "skipped for " + std::to_string(count) + ", " + OnOneLine(reason) + '\n';
    return text;
}

} // namespace

void DoctorStep::Skip(std::string reason) {
    verdict = Verdict::kSkipped;
    remarks.push_back(std::move(reason));
}

void DoctorStep::Misbehave(std::string remark) {
    verdict = Verdict::kMisbehaves;
    remarks.push_back(std::move(remark));
}

std::vector<std::string> ListDoctorSteps() {
    return {std::begin(kDoctorSteps) + 1, std::end(kDoctorSteps) - 1};
}

DoctorRow::Verdict DoctorRow::GetVerdict() const {
    if (!wasMade)
        return Verdict::kFailed;
    bool const misbehaves = std::ranges::any_of(
        steps, [](auto const& entry) { return entry.second.verdict == DoctorStep::Verdict::kMisbehaves; });
    return misbehaves ? Verdict::kMisbehaves : Verdict::kFine;
}

bool DoctorReport::IsFine() const {
    return !interrupted && std::ranges::all_of(rows, [](DoctorRow const& row) {
        return row.GetVerdict() == DoctorRow::Verdict::kFine;
    });
}

nlohmann::ordered_json ToJSON(DoctorStep const& step) {
    return {{"verdict", kStepVerdicts[static_cast<std::size_t>(step.verdict)]},
            {"seconds", step.seconds},
            {"remarks", step.remarks}};
}

bool ReadStep(nlohmann::ordered_json const& document, DoctorStep& step) {
    try {
        auto const verdict = std::ranges::find(kStepVerdicts, document.at("verdict").get<std::string>());
        if (verdict == kStepVerdicts.end())
            return false;
        step.verdict = static_cast<DoctorStep::Verdict>(verdict - kStepVerdicts.begin());
        document.at("seconds").get_to(step.seconds);
        document.at("remarks").get_to(step.remarks);
        return true;
    } catch (nlohmann::json::exception const&) {
        return false;
    }
}

std::string FormatJSON(DoctorReport const& report) {
    auto plugins = nlohmann::ordered_json::array();
    for (DoctorRow const& row : report.rows) {
        nlohmann::ordered_json document{{"path", row.path},
                                        {"id", nullptr},
                                        {"name", nullptr},
                                        {"technology", row.technology},
                                        {"verdict", NameOf(row.GetVerdict())},
                                        {"timesRealTime", nullptr},
                                        {"steps", nlohmann::ordered_json::object()}};
        if (!row.id.empty())
            document["id"] = row.id;
        if (!row.name.empty())
            document["name"] = row.name;
        if (row.timesRealTime)
            document["timesRealTime"] = *row.timesRealTime;
        for (char const* const name : kDoctorSteps) {
            if (auto const step = row.steps.find(name); step != row.steps.end())
                document["steps"][name] = ToJSON(step->second);
        }
        plugins.push_back(std::move(document));
    }
    return ToText({{"seconds", report.seconds},
                   {"interrupted", report.interrupted},
                   {"passedOver", report.passedOver},
                   {"plugins", std::move(plugins)}});
}

std::string FormatTable(DoctorReport const& report) {
    ColumnTable table({{"plug-in"},
                       {"format"},
                       {"scan"},
                       {"info"},
                       {"render"},
                       {"state"},
                       {"editor"},
                       {"teardown"},
                       {"x real time", true},
                       {"remarks"}});
    for (DoctorRow const& row : report.rows)
        table.AddRow(MakeCells(row));
    return (report.rows.empty() ? "" : table.Finish()) + TellSkipped(report) + Summarize(report);
}

} // namespace vynhost
