#include "vynhost/CommandError.h"

#include "vynhost/OneLine.h"

#include <utility>

namespace vynhost {

CommandError::CommandError(ExitStatus status, Subject subject, std::string name, std::string text)
    : std::runtime_error(OnOneLine(std::move(text))), mStatus(status), mSubject(subject), mName(std::move(name)) {}

CommandError CommandError::WrongUsage(std::string text) {
    return {ExitStatus::kWrongUsage, Subject::kNone, {}, std::move(text)};
}

CommandError CommandError::OfFile(std::string name, std::string text) {
    return {ExitStatus::kWorkFailed, Subject::kFile, std::move(name), std::move(text)};
}

CommandError CommandError::OfPlugin(std::string name, std::string text) {
    return {ExitStatus::kPluginRefused, Subject::kPlugin, std::move(name), std::move(text)};
}

CommandError CommandError::WithTrace(std::vector<std::string> lines) const {
    CommandError error = *this;
    error.mTrace = std::move(lines);
    return error;
}

} // namespace vynhost
