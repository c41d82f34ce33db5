#include "vynscripting/definition/ScriptItem.h"

#include "vyncore/threads/MainThreadCalls.h"
#include "vynscripting/InternalErrorException.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ParameterErrorException.h"
#include "vynscripting/ScriptObject.h"
#include "vynscripting/threads/UIThreadCalls.h"

#include <exception>
#include <limits>
#include <utility>

namespace vynscripting::definition {

ScriptItem::ScriptItem(Kind kind, ScriptItemText const& text, std::vector<ScriptParameter> parameters,
                       PropertyType result, unsigned flags)
    : mKind(kind),
      mName(text.name),
      mDescription(text.description),
      mParameters(std::move(parameters)),
      mResult(result),
      mFlags(flags) {}

ScriptItem::~ScriptItem() = default;

ScriptValue ScriptItem::Call(ScriptContext const* context, ScriptObject& object,
                             std::span<ScriptValue const> arguments) const {
    if (!Fits(object) || arguments.size() != mParameters.size())
        throw ParameterErrorException();
    bool const contextIsAsynchronous = context && (context->GetFlags() & ScriptContext::kAsynchronousCalls) != 0;
    if (contextIsAsynchronous && (mFlags & ScriptItemFlags::kMayBeAsynchronous) != 0)
        return CallLater(object, arguments);
    if ((mFlags & ScriptItemFlags::kRunsOnUIThread) == 0)
        return Run(object, arguments);
    ScriptValue result;
    threads::DirectVoidCallOnUIThread([&] { result = Run(object, arguments); }, threads::GetSynchronousTimeout());
    return result;
}

ScriptValue ScriptItem::CallLater(ScriptObject& object, std::span<ScriptValue const> arguments) const {
    boost::intrusive_ptr<NativePromise> const promise(new NativePromise);
    // The script may let go of the object before the call comes to run.
    auto call = [this, promise, held = ScriptObjectPtr(&object),
                 values = std::vector<ScriptValue>(arguments.begin(), arguments.end())] {
        try {
            promise->Resolve(Run(*held, values));
        } catch (std::exception const& error) {
            promise->Reject(mName + ": " + error.what());
        } catch (...) {
            promise->Reject(mName + ": threw an exception");
        }
    };
    if (!vyncore::threads::AsyncCallFromMainThread(std::move(call), 0))
        throw InternalErrorException();
    return promise;
}

float ScriptItem::NarrowToFloat(double value) noexcept {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr double kMost = std::numeric_limits<float>::max();
    if (value > kMost)
        return kInfinity;
    return value < -kMost ? -kInfinity : static_cast<float>(value);
}

} // namespace vynscripting::definition
