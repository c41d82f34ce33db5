#include "vyncore/config/ZString.h"

#include "vyncore/config/Localizer.h"

namespace vyncore {

UString FillZString(std::string_view zstring, std::span<UString const> arguments) {
    UString const pattern = config::Localizer::Get().GetString(zstring);
    UString text;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        bool const isMark = pattern[index] == u'@' && index + 1 < pattern.size();
        std::size_t const number = isMark ? static_cast<std::size_t>(pattern[index + 1]) - u'0' : arguments.size();
        if (number < arguments.size() && number < 10) {
            text += arguments[number];
            ++index;
        } else {
            text += pattern[index];
        }
    }
    return text;
}

} // namespace vyncore
