#include "vyncore/proplist/PropList.h"

#include "os/Heap.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>
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

bool SameValue(PropList::Values::value_type const& left, PropList::Values::value_type const& right) {
    auto const same = [&]<class T>(T const& value) {
        T const* const other = std::get_if<T>(&right.second);
        return other && Same(value, *other);
    };
    return left.first == right.first && std::visit(same, left.second);
}

template <class Map, class SameEntry>
bool SameEntries(Map const& left, Map const& right, SameEntry const& same) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), same);
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

// Whatever goes through a whole tree keeps a list of what is left to do: a tree may be deeper than calls can go. Here
// the nodes themselves are the list, so that nothing is allocated.
PropList::~PropList() {
    std::size_t freed = mLists.size();
    std::multimap<UTF8String, std::unique_ptr<PropList>, std::less<>> waiting;
    for (auto const& [key, list] : mLists)
        waiting.merge(list->mLists);
    for (; !waiting.empty(); ++freed) {
        auto const next = waiting.extract(waiting.begin());
        waiting.merge(next.mapped()->mLists);
    }
    mLists.clear(); // none of them has any below it now
    constexpr std::size_t kVeryMany = 4096;
    if (freed > kVeryMany)
        os::JoinFreedMemory();
}

PropList::PropList(PropList const& other) : PropList() {
    std::vector<std::pair<PropList const*, PropList*>> waiting{{&other, this}};
    while (!waiting.empty()) {
        auto const [from, to] = waiting.back();
        waiting.pop_back();
        to->mValues = from->mValues;
        for (auto const& [key, list] : from->mLists)
            waiting.emplace_back(list.get(), &to->CreateList(key));
    }
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
void PropList::SetValue(std::string_view key, T value) {
    mValues.insert_or_assign(UTF8String(key), Value(std::move(value)));
}

template <PropType T>
bool PropList::AddValue(std::string_view key, T value) {
    bool const isLast = mValues.empty() || mValues.rbegin()->first.compare(key) < 0;
    auto const place = isLast ? mValues.end() : mValues.lower_bound(key);
    if (place != mValues.end() && place->first == key)
        return false;
    mValues.emplace_hint(place, std::piecewise_construct, std::forward_as_tuple(key),
                         std::forward_as_tuple(std::in_place_type<T>, std::move(value)));
    return true;
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
    // Lists that are stored come in their order.
    bool const isLast = !mLists.empty() && mLists.rbegin()->first.compare(key) < 0;
    auto const place = isLast ? mLists.end() : mLists.lower_bound(key);
    if (place != mLists.end() && place->first == key)
        return *place->second;
    return *mLists.emplace_hint(place, UTF8String(key), std::make_unique<PropList>())->second;
}

std::vector<UTF8String> PropList::GetListNames() const {
    return Keys(mLists);
}

std::vector<std::pair<std::string_view, PropList const*>> PropList::GetLists() const {
    std::vector<std::pair<std::string_view, PropList const*>> lists;
    lists.reserve(mLists.size());
    for (auto const& [name, list] : mLists)
        lists.emplace_back(name, list.get());
    return lists;
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
    std::vector<std::pair<PropList const*, PropList const*>> waiting{{this, &other}};
    auto const sameList = [&](auto const& left, auto const& right) {
        waiting.emplace_back(left.second.get(), right.second.get());
        return left.first == right.first;
    };
    while (!waiting.empty()) {
        auto const [left, right] = waiting.back();
        waiting.pop_back();
        if (!SameEntries(left->mValues, right->mValues, SameValue) ||
            !SameEntries(left->mLists, right->mLists, sameList))
            return false;
    }
    return true;
}

template VYN_API bool PropList::GetValue(std::string_view, float&) const;
template VYN_API bool PropList::GetValue(std::string_view, int&) const;
template VYN_API bool PropList::GetValue(std::string_view, unsigned&) const;
template VYN_API bool PropList::GetValue(std::string_view, bool&) const;
template VYN_API bool PropList::GetValue(std::string_view, UTF8String&) const;
template VYN_API bool PropList::GetValue(std::string_view, UString&) const;
template VYN_API bool PropList::GetValue(std::string_view, std::list<float>&) const;

template VYN_API void PropList::SetValue(std::string_view, float);
template VYN_API void PropList::SetValue(std::string_view, int);
template VYN_API void PropList::SetValue(std::string_view, unsigned);
template VYN_API void PropList::SetValue(std::string_view, bool);
template VYN_API void PropList::SetValue(std::string_view, UTF8String);
template VYN_API void PropList::SetValue(std::string_view, UString);
template VYN_API void PropList::SetValue(std::string_view, std::list<float>);

template VYN_API bool PropList::AddValue(std::string_view, float);
template VYN_API bool PropList::AddValue(std::string_view, int);
template VYN_API bool PropList::AddValue(std::string_view, unsigned);
template VYN_API bool PropList::AddValue(std::string_view, bool);
template VYN_API bool PropList::AddValue(std::string_view, UTF8String);
template VYN_API bool PropList::AddValue(std::string_view, UString);
template VYN_API bool PropList::AddValue(std::string_view, std::list<float>);

} // namespace vyncore::proplist
