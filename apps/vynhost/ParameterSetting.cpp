#include "vynhost/ParameterSetting.h"

#include "vynhost/CommandError.h"
#include "vynhost/NumberText.h"

namespace vynhost {

ParameterSetting ParseParameterSetting(std::string_view text) {
    std::size_t const end = text.rfind('=');
    if (end == std::string_view::npos || TrimBlanks(text.substr(0, end)).empty())
        throw CommandError::WrongUsage("--set: \"" + std::string(text) + "\" is not of the form NAME=VALUE");
    return {std::string(text.substr(0, end)), std::string(text.substr(end + 1))};
}

} // namespace vynhost
