#include "vyncore/console/CommandRegistry.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace vyncore::console {
namespace {

std::u16string_view TrimBlanks(std::u16string_view text) {
    std::size_t const first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::vector<UString> SplitAtCommas(std::u16string_view text) {
    std::vector<UString> parts;
    while (!text.empty()) {
        std::size_t const length = std::min(text.find(u','), text.size());
        if (length > 0)
            parts.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return parts;
}

bool Fail(UString& output, std::string_view reason) {
    output += string::UTF8to16(reason) + u"\n";
    return false;
}

} // namespace

CommandRegistry& CommandRegistry::Get() {
    static CommandRegistry& registry = *new CommandRegistry;
    return registry;
}

bool CommandRegistry::RegisterCommand(UTF8String const& name, UTF8String const& help, Factory const& factory) {
    if (name.empty() || !factory || mCommands.contains(name))
        return false;
    std::unique_ptr<Command> command = factory(name, help);
    return command && mCommands.emplace(name, std::move(command)).second;
}

std::unique_ptr<Command> CommandRegistry::UnregisterCommand(std::string_view name) {
    auto const found = mCommands.find(name);
    if (found == mCommands.end())
        return nullptr;
    return std::move(mCommands.extract(found).mapped());
}

bool CommandRegistry::Execute(UString const& line, UString& output) {
    std::u16string_view const text = TrimBlanks(line);
    std::size_t const nameLength = std::min(text.find(u' '), text.size());
    UTF8String const name = string::UTF16to8(text.substr(0, nameLength));
    auto const found = mCommands.find(name);
    if (found == mCommands.end())
        return Fail(output, "Unknown command: " + name);
    try {
        return found->second->Execute(SplitAtCommas(TrimBlanks(text.substr(nameLength))), output);
    } catch (std::exception const& exception) {
        return Fail(output, name + ": " + exception.what());
    } catch (...) {
        return Fail(output, name + ": failed");
    }
}

std::vector<UTF8String> CommandRegistry::GetNames() const {
    std::vector<UTF8String> names;
    for (auto const& entry : mCommands)
        names.push_back(entry.first);
    return names;
}

UTF8String CommandRegistry::GetHelp(std::string_view name) const {
    auto const found = mCommands.find(name);
    return found == mCommands.end() ? UTF8String() : found->second->GetHelp();
}

} // namespace vyncore::console
