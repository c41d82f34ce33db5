#include "vyncore/serialization/JSON.h"

#include "vyncore/strings/StringUtils.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace vyncore::serialization {

namespace {

void Write(boost::any const& value, UTF8String& text);

void WriteScalar(nlohmann::json const& value, UTF8String& text) {
    text += value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void WriteArray(JSONArray const& array, UTF8String& text) {
    char separator = '[';
    for (boost::any const& element : array) {
        text += std::exchange(separator, ',');
        Write(element, text);
    }
    text += array.empty() ? "[]" : "]";
}

void WriteObject(JSONObject const& object, UTF8String& text) {
    char separator = '{';
    for (auto const& [key, value] : object) {
        text += std::exchange(separator, ',');
        WriteScalar(key, text);
        text += ':';
        Write(value, text);
    }
    text += object.empty() ? "{}" : "}";
}

template <class T>
bool WriteIf(boost::any const& value, UTF8String& text) {
    T const* const held = boost::any_cast<T>(&value);
    if (held)
        WriteScalar(*held, text);
    return held != nullptr;
}

template <class... Types>
bool WriteIfOneOf(boost::any const& value, UTF8String& text) {
    return (WriteIf<Types>(value, text) || ...);
}

// What is no type of JSON's own, but as good as one.
boost::any ToText(boost::any const& value) {
    if (auto const* const wide = boost::any_cast<UString>(&value))
        return string::UTF16to8(*wide);
    char const* const narrow = boost::any_cast<char const*>(value);
    return narrow ? boost::any(UTF8String(narrow)) : boost::any();
}

void Write(boost::any const& value, UTF8String& text) {
    if (value.empty())
        text += "null";
    else if (auto const* const object = boost::any_cast<JSONObject>(&value))
        WriteObject(*object, text);
    else if (auto const* const array = boost::any_cast<JSONArray>(&value))
        WriteArray(*array, text);
    else if (!WriteIfOneOf<UTF8String, std::int64_t, std::uint64_t, double, bool, int, unsigned, long long,
                           unsigned long long, float>(value, text))
        Write(ToText(value), text);
}

} // namespace

UTF8String GetJSONUTF8String(boost::any const& value) {
    UTF8String text;
    Write(value, text);
    return text;
}

void AddToObject(boost::any& object, UTF8String const& key, boost::any const& value) {
    boost::any added = value; // which may lie in the object, or be it
    if (object.empty()) {
        JSONObject made;
        made.Set(key, std::move(added));
        object = std::move(made);
    } else {
        boost::any_cast<JSONObject&>(object).Set(key, std::move(added));
    }
}

void AppendToArray(boost::any& array, boost::any const& value) {
    boost::any added = value;
    if (array.empty()) {
        JSONArray made;
        made.Append(std::move(added));
        array = std::move(made);
    } else {
        boost::any_cast<JSONArray&>(array).Append(std::move(added));
    }
}

boost::any const* GetVariantInObject(boost::any const& object, UTF8String const& key) {
    auto const* const members = boost::any_cast<JSONObject>(&object);
    return members ? members->Find(key) : nullptr;
}

} // namespace vyncore::serialization
