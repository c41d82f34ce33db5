#include "vynhost/ScriptInterface.h"

#include "vynhost/JSONText.h"

#include "vynscripting/definition/ScriptDefinitions.h"

namespace vynhost {

using vynscripting::ValueTypeName;
using vynscripting::definition::ScriptItem;
using vynscripting::definition::ScriptObjectDefinitionBase;

namespace {

auto GetClasses() {
    return vynscripting::definition::ScriptDefinitions::Get().GetAll();
}

std::string NamespaceOf(ScriptObjectDefinitionBase const& definition) {
    std::string name;
    for (auto const& part : definition.GetNamespaces())
        name += (name.empty() ? "" : ".") + part.name;
    return name;
}

bool IsMethod(ScriptItem const& item) {
    return item.GetKind() == ScriptItem::Kind::kMethod;
}

// "getParameter(index: int): float", "parameterCount: int"
std::string SignatureOf(ScriptItem const& item) {
    std::string arguments;
    for (auto const& parameter : item.GetParameters())
        arguments +=
            (arguments.empty() ? "" : ", ") + parameter.name + ": " + std::string(ValueTypeName(parameter.type));
    return item.GetName() + (IsMethod(item) ? '(' + arguments + ')' : "") + ": " +
           std::string(ValueTypeName(item.GetResultType()));
}

nlohmann::ordered_json ToJSON(ScriptItem const& item) {
    auto arguments = nlohmann::ordered_json::array();
    for (auto const& parameter : item.GetParameters())
        arguments.push_back({{"name", parameter.name}, {"type", ValueTypeName(parameter.type)}});
    return {{"name", item.GetName()},
            {"kind", IsMethod(item) ? "method" : "property"},
            {"arguments", arguments},
            {"result", ValueTypeName(item.GetResultType())},
            {"description", item.GetDescription()}};
}

// What would be markup otherwise stands as it is.
std::string EscapeMarkdown(std::string const& text) {
    std::string escaped;
    for (char const c : text) {
        if (c == '<' || c == '|' || c == '*' || c == '_')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

} // namespace

std::string FormatScriptInterfaceText() {
    std::string text;
    for (auto const* const definition : GetClasses()) {
        text += (text.empty() ? "" : "\n") + NamespaceOf(*definition) + "\n  " + definition->GetDescription() + '\n';
        for (auto const& item : definition->GetItems())
            text += "    " + SignatureOf(*item) + "\n        " + item->GetDescription() + '\n';
    }
    return text;
}

std::string FormatScriptInterfaceJSON() {
    auto classes = nlohmann::ordered_json::array();
    for (auto const* const definition : GetClasses()) {
        auto items = nlohmann::ordered_json::array();
        for (auto const& item : definition->GetItems())
            items.push_back(ToJSON(*item));
        classes.push_back({{"class", definition->GetObjectClassName()},
                           {"namespace", NamespaceOf(*definition)},
                           {"description", definition->GetDescription()},
                           {"items", items}});
    }
    return ToText(classes);
}

std::string FormatScriptInterfaceMarkdown() {
    std::string text;
    for (auto const* const definition : GetClasses()) {
        text += (text.empty() ? "### " : "\n### ") + definition->GetObjectClassName() + "\n\n`" +
                NamespaceOf(*definition) + "`: " + EscapeMarkdown(definition->GetDescription()) +
                "\n\n| Item | Description |\n| --- | --- |\n";
        for (auto const& item : definition->GetItems())
            text += "| `" + SignatureOf(*item) + "` | " + EscapeMarkdown(item->GetDescription()) + " |\n";
    }
    return text;
}

} // namespace vynhost
