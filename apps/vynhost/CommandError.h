#pragma once

#include <stdexcept>
#include <string>

namespace vynhost {

/// The exit statuses of every command.
enum class ExitStatus : int {
    kSuccess = 0,
    kWorkFailed = 1,
    kWrongUsage = 2,
    kPluginRefused = 3, ///< or missing
};

/// Why a command can't do what it was asked: one line for a person, what it is about, and the exit status.
/// Thrown by the parts of a command, reported once at its end.
class CommandError : public std::runtime_error {
public:
    /// What kind of thing the failure is about; names the key of the JSON document.
    enum class Subject { kNone, kFile, kPlugin };

    /// @param name  the file or plug-in as the user named it; empty with Subject::kNone
    /// @param text  the reason, without the name; line breaks in it become blanks
    CommandError(ExitStatus status, Subject subject, std::string name, std::string text);

    /// Wrong usage that concerns no file.
    /// [any-thread]
    static CommandError WrongUsage(std::string text);

    /// Work that failed on account of a file.
    /// [any-thread]
    static CommandError OfFile(std::string name, std::string text);

    /// A plug-in that is refused, missing, or fails.
    /// [any-thread]
    static CommandError OfPlugin(std::string name, std::string text);

    /// [any-thread]
    ExitStatus GetStatus() const noexcept { return mStatus; }

    /// [any-thread]
    Subject GetSubject() const noexcept { return mSubject; }

    /// [any-thread]
    std::string const& GetName() const noexcept { return mName; }

private:
    ExitStatus mStatus;
    Subject mSubject;
    std::string mName;
};

} // namespace vynhost
