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

// What has a key of the collection, in the order of the numbers. An entry is a pair of a key and something else.
template <class Entries>
auto PickNumbered(Entries const& entries, std::string_view stem, int count) {
    std::vector<std::pair<int, typename Entries::value_type const*>> picked;
    for (auto const& entry : entries) {
        if (int const number = NumberOf(entry.first, stem); number >= 0 && number < count)
            picked.emplace_back(number, &entry);
    }
    std::sort(picked.begin(), picked.end());
    return picked;
}

} // namespace

std::vector<PropList const*> FindNumberedLists(PropList const& list, std::string_view stem, int count) {
    std::vector<PropList const*> found;
    auto const lists = list.GetLists();
    for (auto const& [number, entry] : PickNumbered(lists, stem, count))
        found.push_back(entry->second);
    return found;
}

std::vector<UString> FindNumberedTexts(PropList const& list, std::string_view stem, int count) {
    std::vector<UString> texts;
    UString text;
    for (auto const& [number, entry] : PickNumbered(list.GetValues(), stem, count)) {
        if (list.GetValue(entry->first, text) && !text.empty())
            texts.push_back(text);
    }
    return texts;
}

} // namespace vyncore::proplist::utils
