#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <utility>
#include <vector>

namespace vyncore::console {

/// Something that a person can run from an application's console. Made and owned by the CommandRegistry while it is
/// registered. It keeps the name and the help text that it was registered with.
class VYN_API Command {
public:
    /// [main-thread]
    Command(UTF8String name, UTF8String help) : mName(std::move(name)), mHelp(std::move(help)) {}

    Command(Command const&) = delete;
    Command& operator=(Command const&) = delete;
    virtual ~Command() = default;

    /// Does the work and appends what there is to say, in whole lines, to output. No argument is empty.
    /// False when it did not do what was asked; output says why.
    /// [main-thread]
    virtual bool Execute(std::vector<UString> const& args, UString& output) = 0;

    /// [main-thread]
    UTF8String const& GetName() const noexcept { return mName; }

    /// [main-thread]
    UTF8String const& GetHelp() const noexcept { return mHelp; }

private:
    UTF8String mName;
    UTF8String mHelp;
};

} // namespace vyncore::console
