#include "vynhost/NameLookup.h"

#include "vynhost/CommandError.h"
#include "vynhost/NumberText.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <numeric>
#include <system_error>
#include <utility>

namespace vynhost {

namespace {

std::string Fold(std::string const& text) {
    using namespace vyncore::string;
    return UTF16to8(UpperCase(UTF8to16(TrimBlanks(text))));
}

} // namespace

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
    std::vector<int> const found = FindByName(nameOrIndex);
    if (found.size() == 1)
        return found.front();
    if (found.size() > 1)
        throw CommandError::WrongUsage('"' + nameOrIndex + "\" is the name of several " + mKind +
                                       "s, choose one by its index: " + List(found));
    if (int const index = FindByIndex(nameOrIndex); index >= 0)
        return index;
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
    constexpr std::size_t kMostListed = 20;
    std::size_t const listed = std::min(indices.size(), kMostListed);
    std::string list;
    for (std::size_t i = 0; i < listed; ++i)
        list += (i == 0 ? "" : ", ") + std::to_string(indices[i]) + " \"" +
                mNames[static_cast<std::size_t>(indices[i])] + '"';
    if (listed < indices.size())
        list += " and " + std::to_string(indices.size() - listed) + " more";
    return list;
}

} // namespace vynhost
