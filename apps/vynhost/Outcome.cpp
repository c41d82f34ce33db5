#include "vynhost/Outcome.h"

#include "vynhost/JSONText.h"
#include "vynhost/OneLine.h"

#include "os/Console.h"

#include <cstdio>
#include <exception>

namespace vynhost {

namespace {

void PrintError(std::string const& line) {
    std::fprintf(stderr, "vynhost: %s\n", OnOneLine(line).c_str());
}

ExitStatus ReportFailure(CommandError const& error, FailureForm form) {
    if (form != FailureForm::kText) {
        nlohmann::ordered_json document;
        document["error"] = error.what();
        if (error.GetSubject() != CommandError::Subject::kNone)
            document[error.GetSubject() == CommandError::Subject::kFile ? "file" : "plugin"] = error.GetName();
        os::WriteOutput(form == FailureForm::kJSONLine ? ToLine(document) : ToText(document));
    } else {
        std::string const name = error.GetName().empty() ? "\"\"" : error.GetName();
        PrintError(error.GetSubject() == CommandError::Subject::kNone ? error.what() : name + ": " + error.what());
        for (std::string const& line : error.GetTrace())
            std::fprintf(stderr, "    %s\n", OnOneLine(line).c_str());
    }
    return error.GetStatus();
}

ExitStatus RunReported(FailureForm form, std::function<std::string()> const& work) {
    try {
        if (os::WriteOutput(work()))
            return ExitStatus::kSuccess;
        PrintError("the result could not be written to standard output");
        return ExitStatus::kWorkFailed;
    } catch (FailedReport const& report) {
        return os::WriteOutput(report.text) ? report.status : ExitStatus::kWorkFailed;
    } catch (CommandError const& error) {
        return ReportFailure(error, form);
    } catch (std::exception const& error) {
        return ReportFailure({ExitStatus::kWorkFailed, CommandError::Subject::kNone, {}, error.what()}, form);
    }
}

} // namespace

ExitStatus RunCommand(FailureForm form, std::function<std::string()> const& work) noexcept {
    try {
        return RunReported(form, work);
    } catch (...) {
        PrintError("failed for no reason that could be told");
        return ExitStatus::kWorkFailed;
    }
}

} // namespace vynhost
