#include "vynhost/ParamsReport.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/JSONText.h"
#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"

namespace vynhost {

namespace {

std::string RemarkText(ParameterFacts const& facts) {
    if (!facts.exposed)
        return facts.automatable ? "hidden" : "internal";
    return facts.automatable ? "" : "not automatable";
}

} // namespace

std::string ValueText(ParameterFacts const& facts) {
    std::string const text = facts.text.empty() ? WriteNumber(WidenNumber(facts.display)) : facts.text;
    // Many plug-ins put the unit into the text as well.
    return facts.label.empty() || text.ends_with(facts.label) ? text : text + ' ' + facts.label;
}

std::string FormatJSON(std::vector<ParameterFacts> const& parameters) {
    auto list = nlohmann::ordered_json::array();
    for (ParameterFacts const& facts : parameters) {
        nlohmann::ordered_json row{{"index", facts.index}, {"id", nullptr}};
        if (facts.id)
            row["id"] = *facts.id;
        row["name"] = facts.name;
        row["label"] = facts.label;
        row["low"] = WidenNumber(facts.low);
        row["high"] = WidenNumber(facts.high);
        row["steps"] = facts.steps;
        row["value"] = WidenNumber(facts.value);
        row["display"] = WidenNumber(facts.display);
        row["text"] = facts.text;
        row["exposed"] = facts.exposed;
        row["automatable"] = facts.automatable;
        list.push_back(std::move(row));
    }
    return ToText(list);
}

std::string FormatTable(std::string const& title, std::vector<ParameterFacts> const& parameters) {
    if (parameters.empty())
        return OnOneLine(title) + "\n  no parameters\n";
    ColumnTable table({{"index", true},
                       {"ID", true},
                       {"name"},
                       {"value", true},
                       {"from", true},
                       {"to", true},
                       {"steps", true},
                       {""}});
    for (ParameterFacts const& facts : parameters)
        table.AddRow({std::to_string(facts.index), facts.id ? std::to_string(*facts.id) : "", facts.name,
                      ValueText(facts), WriteNumber(WidenNumber(facts.low)), WriteNumber(WidenNumber(facts.high)),
                      facts.steps > 0 ? std::to_string(facts.steps) : "", RemarkText(facts)});
    return OnOneLine(title) + '\n' + table.Finish();
}

} // namespace vynhost
