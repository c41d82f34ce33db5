#include "vynhost/NameLookup.h"

#include "vynhost/CommandError.h"
#include "vynhost/FoldedText.h"
#include "vynhost/ListText.h"
#include "vynhost/NumberText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <numeric>
#include <system_error>
#include <utility>

namespace vynhost {

NameLookup::NameLookup(std::string kind, std::vector<std::string> names)
    : mKind(std::move(kind)), mNames(std::move(names)) {
    for (int index = 0; index < static_cast<int>(mNames.size()); ++index) {
        std::string const& name = mNames[static_cast<std::size_t>(index)];
        mExact[name].push_back(index);
        mFolded[Fold(name)].push_back(index);
    }
}

std::vector<int> NameLookup::FindByName(std::string const& name) const {
    if (auto const exact = mExact.find(name); exact != mExact.end())
        return exact->second;
    auto const folded = mFolded.find(Fold(name));
    return folded != mFolded.end() ? folded->second : std::vector<int>();
}

int NameLookup::FindByIndex(std::string const& text) const {
    int index = -1;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    bool const whole = error == std::errc() && end == text.data() + text.size();
    return whole && index < static_cast<int>(mNames.size()) ? index : -1;
}

int NameLookup::Find(std::string const& nameOrIndex) const {
    if (TrimBlanks(nameOrIndex).empty())
        throw CommandError::WrongUsage("a " + mKind + " is chosen by its name or its index");
    std::vector<int> const found = FindByName(nameOrIndex);
    if (found.size() == 1)
        return found.front();
    if (int const index = FindByIndex(nameOrIndex); index >= 0)
        return index;
    if (found.size() > 1)
        throw CommandError::WrongUsage('"' + nameOrIndex + "\" is the name of several " + mKind +
                                       "s, choose one by its index: " + List(found));
    throw CommandError::WrongUsage(
        "there is no " + mKind + " \"" + nameOrIndex + '"' +
        (mNames.empty() ? ": the plug-in has none" : "; choose from " + List(FindSimilar(nameOrIndex))));
}

std::vector<int> NameLookup::FindSimilar(std::string const& text) const {
    std::string const wanted = Fold(text);
    std::vector<int> all(mNames.size());
    std::iota(all.begin(), all.end(), 0);
    std::vector<int> similar;
    std::ranges::copy_if(all, std::back_inserter(similar), [&](int index) {
        return Fold(mNames[static_cast<std::size_t>(index)]).find(wanted) != std::string::npos;
    });
    return similar.empty() ? all : similar;
}

std::string NameLookup::List(std::vector<int> const& indices) const {
    std::vector<std::string> texts;
    for (int const index : indices)
        texts.push_back(std::to_string(index) + " \"" + mNames[static_cast<std::size_t>(index)] + '"');
    return ListTexts(texts);
}

} // namespace vynhost
