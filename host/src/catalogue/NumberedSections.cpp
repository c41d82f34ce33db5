#include "vynaudiofilterhost/catalogue/NumberedSections.h"

#include <charconv>
#include <map>
#include <string>

namespace vynaudiofilterhost {

using vyncore::UTF8String;
using vyncore::proplist::PropList;

namespace {

// The number behind the stem as it would be written, without a sign or zeros in front; -1 for any other name.
int NumberOf(std::string_view name, std::string_view stem) {
    if (!name.starts_with(stem))
        return -1;
    std::string_view const digits = name.substr(stem.size());
    int number = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number >= 0 && std::to_string(number) == digits ? number : -1;
}

} // namespace

std::vector<PropList const*> FindNumberedSections(PropList const& list, std::string_view stem, int count) {
    // A damaged count may be in the thousands of millions: the names are gone through, and not the numbers.
    std::map<int, PropList const*> sections;
    for (UTF8String const& name : list.GetListNames()) {
        if (int const number = NumberOf(name, stem); number >= 0 && number < count)
            sections.emplace(number, list.FindList(name));
    }
    std::vector<PropList const*> inOrder;
    inOrder.reserve(sections.size());
    for (auto const& [number, section] : sections)
        inOrder.push_back(section);
    return inOrder;
}

} // namespace vynaudiofilterhost
