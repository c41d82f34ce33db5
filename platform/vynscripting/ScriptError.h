#pragma once

#include "vyncore/Export.h"

#include <stdexcept>
#include <string>

namespace vynscripting {

/// Why a script came to its end before its last line: what went wrong, and where. All texts are UTF-8.
class VYN_API ScriptError : public std::runtime_error {
public:
    /// @param text   what went wrong, as in "TypeError: undefined not callable"; what() gives it
    /// @param file   as it was named to the engine
    /// @param line   counted from 1; 0 when no line is to blame
    /// @param stack  the calls that led there, innermost first, one a line; empty when none are known
    ScriptError(std::string const& text, std::string file, int line, std::string stack);
    ScriptError(ScriptError const&);
    ~ScriptError() override;

    /// [any-thread]
    std::string const& GetFile() const noexcept { return mFile; }

    /// [any-thread]
    int GetLine() const noexcept { return mLine; }

    /// [any-thread]
    std::string const& GetStack() const noexcept { return mStack; }

private:
    std::string mFile;
    int mLine;
    std::string mStack;
};

} // namespace vynscripting
