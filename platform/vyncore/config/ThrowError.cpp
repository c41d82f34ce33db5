#include "vyncore/config/ThrowError.h"

#include "vyncore/config/Localizer.h"
#include "vyncore/strings/StringUtils.h"

#include <stdexcept>
#include <string>

namespace vyncore::config {

void ThrowError(std::string_view zstring, std::string_view name) {
    UTF8String const text = string::UTF16to8(Localizer::Get().GetString(zstring));
    throw std::invalid_argument(std::string(text) + " (" + std::string(name) + ")");
}

} // namespace vyncore::config
