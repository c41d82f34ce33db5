#include "vynscripting/duktape/DuktapeArguments.h"

#include "vynscripting/duktape/DuktapeObjects.h"
#include "vynscripting/duktape/DuktapeValues.h"

#include <duktape.h>

#include <cmath>
#include <limits>

namespace vynscripting::duktape {

namespace {

using definition::ScriptItem;

// More elements than this no array of an argument has: a script can claim any length.
constexpr duk_size_t kMostElements = 65'536;

std::string NameType(duk_hthread* heap, int index) {
    if (duk_is_array(heap, index))
        return "an array";
    switch (duk_get_type(heap, index)) {
    case DUK_TYPE_UNDEFINED:
        return "undefined";
    case DUK_TYPE_NULL:
        return "null";
    case DUK_TYPE_BOOLEAN:
        return "a boolean";
    case DUK_TYPE_NUMBER:
        return "a number";
    case DUK_TYPE_STRING:
        return duk_is_symbol(heap, index) ? "a symbol" : "a string";
    default:
        return duk_is_function(heap, index) ? "a function" : "an object";
    }
}

bool IsText(duk_hthread* heap, int index) {
    return duk_is_string(heap, index) && !duk_is_symbol(heap, index);
}

std::string NameElement(unsigned index, std::string const& text) {
    return "element " + std::to_string(index) + " " + text;
}

} // namespace

DuktapeArguments::DuktapeArguments(duk_hthread* heap, DuktapeObjects const& objects, std::string const& className,
                                   ScriptItem const& item) noexcept
    : mHeap(heap), mObjects(objects), mClassName(className), mItem(item) {}

std::span<ScriptValue const> DuktapeArguments::Read(std::span<ScriptValue> values) const {
    auto const& parameters = mItem.GetParameters();
    int const count = static_cast<int>(parameters.size());
    // A getter is given the property's name besides.
    if (mItem.GetKind() == ScriptItem::Kind::kMethod && duk_get_top(mHeap) != count)
        RaiseForCount(duk_get_top(mHeap));
    for (int i = 0; i < count; ++i)
        values[static_cast<std::size_t>(i)] = ReadOne(i, parameters[static_cast<std::size_t>(i)].type);
    return values.first(parameters.size());
}

void DuktapeArguments::Raise(int errorClass, std::string const& text) const {
    RaiseError(mHeap, errorClass, mClassName + "." + mItem.GetName() + " " + text);
}

void DuktapeArguments::RaiseForArgument(int index, int errorClass, std::string const& text) const {
    Raise(errorClass,
          "was given a wrong '" + mItem.GetParameters()[static_cast<std::size_t>(index)].name + "': " + text);
}

void DuktapeArguments::RaiseForCount(int given) const {
    auto const& parameters = mItem.GetParameters();
    std::string names;
    for (auto const& parameter : parameters)
        names += (names.empty() ? "" : ", ") + parameter.name;
    std::string const count = std::to_string(parameters.size());
    Raise(DUK_ERR_TYPE_ERROR, "takes " + (parameters.empty() ? "no arguments" : count + " (" + names + ")") +
                                  " and was given " + std::to_string(given));
}

void DuktapeArguments::Require(bool fits, int index, char const* wanted) const {
    if (!fits)
        RaiseForArgument(index, DUK_ERR_TYPE_ERROR,
                         std::string("it takes ") + wanted + " and not " + NameType(mHeap, index));
}

ScriptValue DuktapeArguments::ReadOne(int index, ParameterType type) const {
    switch (type) {
    case ParameterType::kVoid:
        return {};
    case ParameterType::kBool:
        Require(duk_is_boolean(mHeap, index) != 0, index, "true or false");
        return duk_get_boolean(mHeap, index) != 0;
    case ParameterType::kInt:
        return ReadInt(index);
    case ParameterType::kFloat:
        return ReadNumber(index);
    case ParameterType::kString:
        Require(IsText(mHeap, index), index, "a string");
        return ReadText(mHeap, index);
    case ParameterType::kStringArray:
        return ReadTexts(index);
    case ParameterType::kObjectArray:
        return ReadObjects(index);
    case ParameterType::kObject:
        break;
    }
    ScriptObjectPtr object = mObjects.Get(mHeap, index);
    Require(object != nullptr, index, "an object of the host");
    return object;
}

double DuktapeArguments::ReadNumber(int index) const {
    Require(duk_is_number(mHeap, index) != 0, index, "a number");
    double const number = duk_get_number(mHeap, index);
    if (std::isnan(number))
        RaiseForArgument(index, DUK_ERR_RANGE_ERROR, "NaN is no value of it");
    return number;
}

int DuktapeArguments::ReadInt(int index) const {
    double const number = ReadNumber(index);
    constexpr double kLeast = std::numeric_limits<int>::min();
    constexpr double kMost = std::numeric_limits<int>::max();
    if (number != std::floor(number) || number < kLeast || number > kMost)
        RaiseForArgument(index, DUK_ERR_RANGE_ERROR, "it takes a whole number of 32 bits");
    return static_cast<int>(number);
}

std::vector<vyncore::UString> DuktapeArguments::ReadTexts(int index) const {
    std::vector<vyncore::UString> texts;
    unsigned const count = CountElements(index);
    for (unsigned i = 0; i < count; ++i) {
        duk_get_prop_index(mHeap, index, i);
        if (!IsText(mHeap, -1))
            RaiseForArgument(index, DUK_ERR_TYPE_ERROR, NameElement(i, "is no string"));
        texts.push_back(ReadText(mHeap, -1));
        duk_pop(mHeap);
    }
    return texts;
}

std::vector<ScriptObjectPtr> DuktapeArguments::ReadObjects(int index) const {
    std::vector<ScriptObjectPtr> objects;
    unsigned const count = CountElements(index);
    for (unsigned i = 0; i < count; ++i) {
        duk_get_prop_index(mHeap, index, i);
        objects.push_back(mObjects.Get(mHeap, -1));
        if (!objects.back())
            RaiseForArgument(index, DUK_ERR_TYPE_ERROR, NameElement(i, "is no object of the host"));
        duk_pop(mHeap);
    }
    return objects;
}

unsigned DuktapeArguments::CountElements(int index) const {
    Require(duk_is_array(mHeap, index) != 0, index, "an array");
    duk_size_t const count = duk_get_length(mHeap, index);
    if (count > kMostElements)
        RaiseForArgument(index, DUK_ERR_RANGE_ERROR, "the array is too long");
    return static_cast<unsigned>(count);
}

} // namespace vynscripting::duktape
