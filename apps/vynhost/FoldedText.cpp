#include "vynhost/FoldedText.h"

#include "vynhost/NumberText.h"

#include "vyncore/strings/StringUtils.h"

namespace vynhost {

std::string Fold(std::string_view text) {
    using namespace vyncore::string;
    return UTF16to8(UpperCase(UTF8to16(std::string(TrimBlanks(text)))));
}

} // namespace vynhost
