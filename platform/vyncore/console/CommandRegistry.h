#pragma once

#include "vyncore/console/Command.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace vyncore::console {

/// The commands of the process by name. One per process; it owns the commands that are registered, belongs to the main
/// thread and lives to the end of the process, past every static object.
class VYN_API CommandRegistry {
public:
    /// Makes the command object of a registration.
    using Factory = std::function<std::unique_ptr<Command>(UTF8String const& name, UTF8String const& help)>;

    /// [main-thread]
    static CommandRegistry& Get();

    CommandRegistry(CommandRegistry const&) = delete;
    CommandRegistry& operator=(CommandRegistry const&) = delete;

    /// Makes the command through the factory and keeps it. False, and nothing changes, when the name is empty or taken,
    /// or when the factory is empty or gives null.
    /// [main-thread]
    bool RegisterCommand(UTF8String const& name, UTF8String const& help, Factory const& factory);

    /// Takes a command out and hands it to the caller. Null for a name that isn't registered.
    /// [main-thread]
    std::unique_ptr<Command> UnregisterCommand(std::string_view name);

    /// Runs one line of a console: the name of a command and, behind a blank, its arguments with commas between them.
    /// Adjacent commas count as one; blanks belong to the argument, so that paths may have them. Appends what the
    /// command says to output. False, with the reason in output, for an unknown name and for a command that fails or
    /// throws. A command may register and unregister commands, itself excepted. [main-thread]
    bool Execute(UString const& line, UString& output);

    /// The names that are registered, in ascending order.
    /// [main-thread]
    std::vector<UTF8String> GetNames() const;

    /// The help text of a command; empty for a name that isn't registered.
    /// [main-thread]
    UTF8String GetHelp(std::string_view name) const;

private:
    CommandRegistry() = default;
    ~CommandRegistry() = default;

    std::map<UTF8String, std::unique_ptr<Command>, std::less<>> mCommands;
};

} // namespace vyncore::console
