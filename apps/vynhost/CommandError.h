#pragma once

#include <stdexcept>
#include <string>
#include <vector>

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

    /// The same failure with lines that tell more of it, for a person.
    /// [any-thread]
    CommandError WithTrace(std::vector<std::string> lines) const;

    /// [any-thread]
    ExitStatus GetStatus() const noexcept { return mStatus; }

    /// [any-thread]
    Subject GetSubject() const noexcept { return mSubject; }

    /// [any-thread]
    std::string const& GetName() const noexcept { return mName; }

    /// [any-thread]
    std::vector<std::string> const& GetTrace() const noexcept { return mTrace; }

private:
    ExitStatus mStatus;
    Subject mSubject;
    std::string mName;
    std::vector<std::string> mTrace;
};

/// Thrown by a command that has its report to be printed as always, and yet has not ended well. A plain record.
struct FailedReport {
    std::string text;
    ExitStatus status = ExitStatus::kWorkFailed;
};

} // namespace vynhost
