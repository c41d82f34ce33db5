#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <concepts>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vyncore::proplist {

/// The types that a value may have.
template <class T>
concept PropType =
    std::same_as<T, float> || std::same_as<T, int> || std::same_as<T, unsigned> || std::same_as<T, bool> ||
    std::same_as<T, UTF8String> || std::same_as<T, UString> || std::same_as<T, std::list<float>>;

/// A tree of typed values and named sub-lists: presets, settings and everything stored.
///
/// A value type: a copy is deep, and the owner of a list owns everything below it. Not locked; one thread at a time.
/// 1. Values and sub-lists have names of their own: a value and a sub-list may bear the same key.
/// 2. Both are kept in the order of their keys' bytes, whatever the order of writing.
/// 3. A sub-list stays where it is until it is removed or the list is cleared or assigned, so that pointers to it hold.
/// 4. A tree may be of any depth. Stored it has kMostListLevels levels at most.
class VYN_API PropList {
public:
    using Value = std::variant<float, int, unsigned, bool, UTF8String, UString, std::list<float>>;
    using Values = std::map<UTF8String, Value, std::less<>>;

    /// [any-thread]
    PropList();
    PropList(PropList const& other);
    PropList(PropList&& other) noexcept;
    ~PropList();

    /// A list may be assigned from one of its own sub-lists.
    /// [any-thread]
    PropList& operator=(PropList other) noexcept;

    /// Reads a value. Numbers and truth values turn into each other where that is exact, the two kinds of text always.
    /// False when the key is missing or its value is of another kind or doesn't fit; `value` stays as it was then.
    /// [any-thread]
    template <PropType T>
    bool GetValue(std::string_view key, T& value) const;

    /// Writes a value, in place of one of any type.
    /// [any-thread]
    template <PropType T>
    void SetValue(std::string_view key, T value);

    /// Writes a value unless there is one of that key. Quick when keys come in their order.
    /// [any-thread]
    template <PropType T>
    bool AddValue(std::string_view key, T value);

    /// The sub-list of that name; null when absent.
    /// [any-thread]
    PropList* FindList(std::string_view key);
    PropList const* FindList(std::string_view key) const;

    /// The sub-list of that name, which is made when absent and kept as it is otherwise.
    /// [any-thread]
    PropList& CreateList(std::string_view key);

    /// The names in their order.
    /// [any-thread]
    std::vector<UTF8String> GetListNames() const;
    std::vector<UTF8String> GetValueNames() const;

    /// All sub-lists with their names, in the order of these. Holds until the list changes.
    /// [any-thread]
    std::vector<std::pair<std::string_view, PropList const*>> GetLists() const;

    /// All values in the order of their keys, with the types they were written with.
    /// [any-thread]
    Values const& GetValues() const { return mValues; }

    /// Whether there is neither a value nor a sub-list.
    /// [any-thread]
    bool IsEmpty() const { return mValues.empty() && mLists.empty(); }

    /// Removes everything.
    /// [any-thread]
    void Clear();

    /// Removes the value and the sub-list of that name; false when there was neither.
    /// [any-thread]
    bool RemoveValue(std::string_view key);

    /// Same keys, same types, same values, all the way down. Floating-point numbers compare by their bits, so that a
    /// list equals its copy whatever it holds, and lists that store differently differ.
    /// [any-thread]
    bool operator==(PropList const& other) const;

private:
    Values mValues;
    std::map<UTF8String, std::unique_ptr<PropList>, std::less<>> mLists;
};

} // namespace vyncore::proplist
