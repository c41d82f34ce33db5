#pragma once

#include "vyncore/Export.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptContext.h"
#include "vynscripting/ScriptTypes.h"

#include <span>
#include <string>
#include <vector>

namespace vynscripting::definition {

/// What is special about an item. Flags of several bits are tested for any of them.
namespace ScriptItemFlags {
constexpr unsigned kScriptable = 0x100000;        ///< scripts may use the item, on the thread that they run on
constexpr unsigned kMayBeAsynchronous = 0x600000; ///< in a context of asynchronous calls it gives a promise
constexpr unsigned kRunsOnUIThread = 0x400000;    ///< it runs on the main thread, whatever thread the script is on
} // namespace ScriptItemFlags

/// One argument of a method.
struct ScriptParameter {
    std::string name;
    ParameterType type;
};

/// What an item is to be called with, in one place for all that declare one. A plain record.
struct ScriptItemText {
    char const* name;
    char const* description;
    std::vector<char const*> parameterNames = {}; ///< one for each argument of the function behind the item
};

/// One property or method of a class of script objects: what it is called, takes, gives and is for, and the way to call
/// it. Constant once it is made; it belongs to its definition.
class VYN_API ScriptItem {
public:
    enum class Kind { kProperty, kMethod };

    /// More arguments than this no item takes.
    static constexpr std::size_t kMaxParameters = 8;

    ScriptItem(Kind kind, ScriptItemText const& text, std::vector<ScriptParameter> parameters, PropertyType result,
               unsigned flags);
    ScriptItem(ScriptItem const&) = delete;
    ScriptItem& operator=(ScriptItem const&) = delete;
    virtual ~ScriptItem();

    /// [any-thread]
    Kind GetKind() const noexcept { return mKind; }
    std::string const& GetName() const noexcept { return mName; }
    std::string const& GetDescription() const noexcept { return mDescription; }
    std::vector<ScriptParameter> const& GetParameters() const noexcept { return mParameters; }
    PropertyType GetResultType() const noexcept { return mResult; }
    unsigned GetFlags() const noexcept { return mFlags; }

    /// Calls the item on the object, in the way that its flags and the context's ask for: asynchronously, which gives a
    /// promise; on the main thread; or at once.
    /// @param context    of the script; null is one without flags
    /// @param arguments  one for each parameter, of its type
    /// Throws ParameterErrorException for an object or arguments that don't fit the item, InternalErrorException when
    /// the call doesn't reach its thread, and what the item throws.
    /// [any-thread]
    ScriptValue Call(ScriptContext const* context, ScriptObject& object, std::span<ScriptValue const> arguments) const;

protected:
    /// A number that no float holds becomes infinite.
    /// [any-thread]
    static float NarrowToFloat(double value) noexcept;

    /// Whether the item belongs to the object's class.
    /// [any-thread]
    virtual bool Fits(ScriptObject& object) const = 0;

    /// The item's own work on an object that fits. The number of arguments is right.
    /// [any-thread]
    virtual ScriptValue Run(ScriptObject& object, std::span<ScriptValue const> arguments) const = 0;

private:
    ScriptValue CallLater(ScriptObject& object, std::span<ScriptValue const> arguments) const;

    Kind const mKind;
    std::string const mName;
    std::string const mDescription;
    std::vector<ScriptParameter> const mParameters;
    PropertyType const mResult;
    unsigned const mFlags;
};

} // namespace vynscripting::definition
