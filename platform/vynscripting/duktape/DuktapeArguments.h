#pragma once

#include "vynscripting/definition/ScriptItem.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptTypes.h"

#include <span>
#include <string>

struct duk_hthread;

namespace vynscripting::duktape {

class DuktapeObjects;

/// The arguments of one call of an item, which are the whole stack of the calling function: checked against the item's
/// parameters, and errors that say what is wrong with them. Lives as long as the call.
class DuktapeArguments {
public:
    /// @param className  of the item's class, for the errors
    /// [main-thread]
    DuktapeArguments(duk_hthread* heap, DuktapeObjects const& objects, std::string const& className,
                     definition::ScriptItem const& item) noexcept;

    /// The arguments, one of its type for each parameter. Raises an error for those that don't fit.
    /// @param values  gets them; with room for every parameter
    /// [main-thread]
    std::span<ScriptValue const> Read(std::span<ScriptValue> values) const;

    /// Raises an error of the script that names the item.
    /// [main-thread]
    [[noreturn]] void Raise(int errorClass, std::string const& text) const;

private:
    [[noreturn]] void RaiseForArgument(int index, int errorClass, std::string const& text) const;
    [[noreturn]] void RaiseForCount(int given) const;
    void Require(bool fits, int index, char const* wanted) const;
    ScriptValue ReadOne(int index, ParameterType type) const;
    double ReadNumber(int index) const;
    int ReadInt(int index) const;
    std::vector<vyncore::UString> ReadTexts(int index) const;
    std::vector<ScriptObjectPtr> ReadObjects(int index) const;
    unsigned CountElements(int index) const;

    duk_hthread* const mHeap;
    DuktapeObjects const& mObjects;
    std::string const& mClassName;
    definition::ScriptItem const& mItem;
};

} // namespace vynscripting::duktape
