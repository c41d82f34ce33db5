#include "vyncore/proplist/NumberedKeys.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

namespace vyncore::proplist::utils {

namespace {

// The number behind the stem as it would be written; -1 for any other key.
int NumberOf(std::string_view key, std::string_view stem) {
    if (!key.starts_with(stem))
        return -1;
    std::string_view const digits = key.substr(stem.size());
    int number = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number >= 0 && std::to_string(number) == digits ? number : -1;
}

using Numbered = std::pair<int, UTF8String>;

// The keys of the collection, in the order of their numbers.
std::vector<Numbered> PickNumbered(std::vector<UTF8String> keys, std::string_view stem, int count) {
    std::vector<Numbered> picked;
    for (UTF8String& key : keys) {
        if (int const number = NumberOf(key, stem); number >= 0 && number < count)
            picked.emplace_back(number, std::move(key));
    }
    std::sort(picked.begin(), picked.end());
    return picked;
}

} // namespace

std::vector<PropList const*> FindNumberedLists(PropList const& list, std::string_view stem, int count) {
    std::vector<PropList const*> lists;
    for (auto const& [number, key] : PickNumbered(list.GetListNames(), stem, count))
        lists.push_back(list.FindList(key));
    return lists;
}

std::vector<UString> FindNumberedTexts(PropList const& list, std::string_view stem, int count) {
    std::vector<UString> texts;
    UString text;
    for (auto const& [number, key] : PickNumbered(list.GetValueNames(), stem, count)) {
        if (list.GetValue(key, text) && !text.empty())
            texts.push_back(text);
    }
    return texts;
}

} // namespace vyncore::proplist::utils
