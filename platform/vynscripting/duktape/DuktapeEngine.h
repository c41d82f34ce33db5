#pragma once

#include "vynscripting/duktape/DuktapeErrors.h"
#include "vynscripting/duktape/DuktapeHeap.h"
#include "vynscripting/duktape/DuktapeObjects.h"
#include "vynscripting/duktape/DuktapePromises.h"
#include "vynscripting/ScriptEngine.h"

#include <functional>
#include <string>
#include <string_view>

namespace vynscripting::duktape {

/// The engine by Duktape: https://duktape.org/api.html.
class DuktapeEngine final : public ScriptEngine {
public:
    /// Throws std::bad_alloc.
    /// [main-thread]
    explicit DuktapeEngine(ScriptLimits const& limits);
    ~DuktapeEngine() override;

    ScriptContextHdl const& GetContextHdl() const noexcept override { return mContext; }
    void SetPrint(std::function<void(std::string const& line)> print) override;
    void SetGlobal(char const* name, ScriptValue const& value) override;
    void SetGlobalItems(ScriptObjectPtr const& object) override;
    ScriptValue Run(std::string_view source, std::string const& file) override;
    void SettlePromises() override;
    bool HasPromises() const noexcept override { return !mPromises.IsEmpty(); }

    /// For the functions that scripts call.
    /// [main-thread]
    DuktapeObjects& GetObjects() noexcept { return mObjects; }
    DuktapePromises& GetPromises() noexcept { return mPromises; }
    DuktapeHeap& GetHeap() noexcept { return mHeap; }

    /// Pushes a value. May raise an error of the engine.
    /// [main-thread]
    void PushValue(duk_hthread* heap, ScriptValue const& value);

private:
    static int Print(duk_hthread* heap);
    static int IsEqual(duk_hthread* heap);
    static int NoteThrow(duk_hthread* heap);

    void RefuseNesting() const;
    void Protect(std::function<void(duk_hthread*)> const& work);
    void PutOwnGlobals(duk_hthread* heap);
    ScriptValue ReadValue(duk_hthread* heap, int index) const;

    ScriptContextHdl const mContext;
    DuktapeObjects mObjects;
    DuktapePromises mPromises;
    std::function<void(std::string const&)> mPrint;
    ScriptPlace mPlace; ///< of what was thrown last without a place of its own
    DuktapeHeap mHeap;  ///< goes first: what it finalizes is forgotten by the others
};

} // namespace vynscripting::duktape
