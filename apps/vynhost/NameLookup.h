#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace vynhost {

/// Finds one of a plug-in's things (its parameters, its presets) by the name or the index that a user gave for it. A
/// name is what a thing is called, or, when nothing is called exactly so, that in any letter case and whatever the
/// blanks at its ends.
class NameLookup {
public:
    /// @param kind   what the things are, such as "parameter"
    /// @param names  in UTF-8, by index; several may be the same
    /// [any-thread]
    NameLookup(std::string kind, std::vector<std::string> names);

    /// The one thing that bears the name; when none or several do, the one whose index the text is. Throws CommandError
    /// (wrong usage), with the names to choose from, when there is none or there are several, and when nothing but
    /// blanks is in the text.
    /// [any-thread]
    int Find(std::string const& nameOrIndex) const;

    /// All things of that name, in order.
    /// [any-thread]
    std::vector<int> FindByName(std::string const& name) const;

    /// [any-thread]
    std::vector<std::string> const& GetNames() const noexcept { return mNames; }

private:
    using Index = std::unordered_map<std::string, std::vector<int>>;

    int FindByIndex(std::string const& text) const;
    std::vector<int> FindSimilar(std::string const& text) const;
    std::string List(std::vector<int> const& indices) const;

    std::string mKind;
    std::vector<std::string> mNames;
    Index mExact;
    Index mFolded;
};

} // namespace vynhost
