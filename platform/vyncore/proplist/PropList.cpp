#include "vyncore/proplist/PropList.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace vyncore::proplist {

namespace {

// A double holds every float, int, unsigned and bool as it is.
template <class T>
bool FromDouble(double number, T& value) {
    if constexpr (std::is_same_v<T, float>) {
        auto const narrow = static_cast<float>(number);
        if (!std::isnan(number) && static_cast<double>(narrow) != number)
            return false;
        value = narrow;
    } else {
        if (!(number >= std::numeric_limits<T>::lowest() && number <= std::numeric_limits<T>::max()))
            return false;
        if (std::trunc(number) != number)
            return false;
        value = static_cast<T>(number);
    }
    return true;
}

template <class From, class To>
bool Convert(From const& held, To& value) {
    if constexpr (std::is_same_v<From, To>)
        value = held;
    else if constexpr (std::is_arithmetic_v<From> && std::is_arithmetic_v<To>)
        return FromDouble(static_cast<double>(held), value);
    else if constexpr (std::is_same_v<From, UTF8String> && std::is_same_v<To, UString>)
        value = string::UTF8to16(held);
    else if constexpr (std::is_same_v<From, UString> && std::is_same_v<To, UTF8String>)
        value = string::UTF16to8(held);
    else
        return false;
    return true;
}

bool Same(float left, float right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
}

bool Same(std::list<float> const& left, std::list<float> const& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](float one, float other) { return Same(one, other); });
}

template <class T>
bool Same(T const& left, T const& right) {
    return left == right;
}

bool SameValue(PropList::Value const& left, PropList::Value const& right) {
    return std::visit(
        [&]<class T>(T const& value) {
            T const* const other = std::get_if<T>(&right);
            return other && Same(value, *other);
        },
        left);
}

template <class Map>
std::vector<UTF8String> Keys(Map const& map) {
    std::vector<UTF8String> keys;
    keys.reserve(map.size());
    for (auto const& entry : map)
        keys.push_back(entry.first);
    return keys;
}

template <class Map>
bool Erase(Map& map, std::string_view key) {
    auto const found = map.find(key);
    if (found == map.end())
        return false;
    map.erase(found);
    return true;
}

} // namespace

PropList::PropList() = default;
PropList::PropList(PropList&& other) noexcept = default;
PropList::~PropList() = default;

PropList::PropList(PropList const& other) : mValues(other.mValues) {
    for (auto const& [key, list] : other.mLists)
        mLists.emplace_hint(mLists.end(), key, std::make_unique<PropList>(*list));
}

PropList& PropList::operator=(PropList other) noexcept {
    mValues.swap(other.mValues);
    mLists.swap(other.mLists);
    return *this;
}

template <PropType T>
bool PropList::GetValue(std::string_view key, T& value) const {
    auto const found = mValues.find(key);
    if (found == mValues.end())
        return false;
    return std::visit([&](auto const& held) { return Convert(held, value); }, found->second);
}

template <PropType T>
void PropList::SetValue(std::string_view key, T const& value) {
    mValues.insert_or_assign(UTF8String(key), Value(value));
}

PropList* PropList::FindList(std::string_view key) {
    auto const found = mLists.find(key);
    return found == mLists.end() ? nullptr : found->second.get();
}

PropList const* PropList::FindList(std::string_view key) const {
    auto const found = mLists.find(key);
    return found == mLists.end() ? nullptr : found->second.get();
}

PropList& PropList::CreateList(std::string_view key) {
    if (PropList* const existing = FindList(key))
        return *existing;
    return *mLists.emplace(UTF8String(key), std::make_unique<PropList>()).first->second;
}

std::vector<UTF8String> PropList::GetListNames() const {
    return Keys(mLists);
}

std::vector<UTF8String> PropList::GetValueNames() const {
    return Keys(mValues);
}

void PropList::Clear() {
    mValues.clear();
    mLists.clear();
}

bool PropList::RemoveValue(std::string_view key) {
    bool const hadValue = Erase(mValues, key);
    return Erase(mLists, key) || hadValue;
}

bool PropList::operator==(PropList const& other) const {
    auto const sameValue = [](auto const& left, auto const& right) {
        return left.first == right.first && SameValue(left.second, right.second);
    };
    auto const sameList = [](auto const& left, auto const& right) {
        return left.first == right.first && *left.second == *right.second;
    };
    return std::equal(mValues.begin(), mValues.end(), other.mValues.begin(), other.mValues.end(), sameValue) &&
           std::equal(mLists.begin(), mLists.end(), other.mLists.begin(), other.mLists.end(), sameList);
}

template VYN_API bool PropList::GetValue(std::string_view, float&) const;
template VYN_API bool PropList::GetValue(std::string_view, int&) const;
template VYN_API bool PropList::GetValue(std::string_view, unsigned&) const;
template VYN_API bool PropList::GetValue(std::string_view, bool&) const;
template VYN_API bool PropList::GetValue(std::string_view, UTF8String&) const;
template VYN_API bool PropList::GetValue(std::string_view, UString&) const;
template VYN_API bool PropList::GetValue(std::string_view, std::list<float>&) const;

template VYN_API void PropList::SetValue(std::string_view, float const&);
template VYN_API void PropList::SetValue(std::string_view, int const&);
template VYN_API void PropList::SetValue(std::string_view, unsigned const&);
template VYN_API void PropList::SetValue(std::string_view, bool const&);
template VYN_API void PropList::SetValue(std::string_view, UTF8String const&);
template VYN_API void PropList::SetValue(std::string_view, UString const&);
template VYN_API void PropList::SetValue(std::string_view, std::list<float> const&);

} // namespace vyncore::proplist
