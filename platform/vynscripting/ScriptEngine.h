#pragma once

#include "vyncore/Export.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptContext.h"
#include "vynscripting/ScriptObject.h"
#include "vynscripting/ScriptTypes.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vynscripting {

/// What a script may use up before it is ended.
struct ScriptLimits {
    std::size_t memoryBytes = std::size_t{256} << 20; ///< of all that the script holds at a time
    std::size_t stackBytes = std::size_t{1} << 20;    ///< of the thread's stack, which must have a quarter more left
    double seconds = 0.0;                             ///< from the beginning of a run on; 0 or less: without end
};

/// Runs scripts: ECMAScript 5.1 with some of what came later. What a script does can't do the host any harm: it uses up
/// no more than its limits, and whatever it gives to an item is checked first.
///
/// One engine holds the globals of all scripts that it runs, one after the other. Several engines know nothing of each
/// other; each belongs to the thread that made it, and objects of one engine are not given to another while it runs.
///
/// Besides the language, scripts have `print(...)`, which takes anything, and `isEqual(a, b)`, which tells whether
/// two script objects are equal (ScriptObject::IsEqual).
class VYN_API ScriptEngine {
public:
    /// Never null. Throws std::bad_alloc when the limits leave no room for the engine itself.
    /// [main-thread]
    static std::unique_ptr<ScriptEngine> Create(ScriptLimits const& limits);

    ScriptEngine(ScriptEngine const&) = delete;
    ScriptEngine& operator=(ScriptEngine const&) = delete;
    virtual ~ScriptEngine();

    /// Of the objects that this engine's scripts see. Never null.
    /// [main-thread]
    virtual ScriptContextHdl const& GetContextHdl() const noexcept = 0;

    /// Where `print` goes: it gets each text in UTF-8, without a line break at its end. Without one nothing is printed.
    /// What it throws is an error of the script.
    /// [main-thread]
    virtual void SetPrint(std::function<void(std::string const& line)> print) = 0;

    /// Gives scripts a global variable. An object without a definition can't be one: ScriptError.
    /// [main-thread]
    virtual void SetGlobal(char const* name, ScriptValue const& value) = 0;

    /// Makes the items of the object global: its methods become functions, its properties variables that can't be set.
    /// [main-thread]
    virtual void SetGlobalItems(ScriptObjectPtr const& object) = 0;

    /// Runs a script to its end and returns what its last statement gives, as far as that is a ScriptValue: nothing
    /// otherwise. An engine doesn't run a script inside of another one of its own: std::logic_error.
    /// @param source  UTF-8
    /// @param file    what errors name
    /// Throws ScriptError when the script can't be understood, throws, or reaches a limit. The engine can be used
    /// afterwards.
    /// [main-thread]
    virtual ScriptValue Run(std::string_view source, std::string const& file) = 0;

    /// Runs what scripts want to be done about promises that are settled by now. A rejected promise that nobody asked
    /// about is an error. Throws ScriptError as Run does; promises that are not done with yet wait for the next time.
    /// [main-thread]
    virtual void SettlePromises() = 0;

    /// Whether promises are still under way.
    /// [main-thread]
    virtual bool HasPromises() const noexcept = 0;

protected:
    ScriptEngine() = default;
};

} // namespace vynscripting
