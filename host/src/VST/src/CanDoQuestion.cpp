#include "vynaudiofilterhost/VST/src/CanDoQuestion.h"

#include "vyncore/strings/Locale.h"

#include <algorithm>
#include <locale>

namespace vynaudiofilterhost::vst {

bool IsQuestion(std::string_view question, std::string_view known) {
    auto const& letters = std::use_facet<std::ctype<char>>(vyncore::Locale::Default().AsStdLocale());
    return std::equal(question.begin(), question.end(), known.begin(), known.end(),
                      [&](char left, char right) { return letters.toupper(left) == letters.toupper(right); });
}

} // namespace vynaudiofilterhost::vst
