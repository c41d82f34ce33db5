#pragma once

#include "vyncore/Export.h"
#include "vyncore/utility/RefCountedObject.h"
#include "vynscripting/ScriptObject.h"
#include "vynscripting/ScriptTypes.h"

#include <string>

namespace vynscripting {

/// The result of a call that is still under way. It is settled once; what comes later changes nothing. The engine asks
/// it (ScriptEngine::SettlePromises) and tells the script.
class VYN_API NativePromise : public vyncore::utility::RefCountedObject {
public:
    enum class State { kPending, kResolved, kRejected };

    NativePromise();
    ~NativePromise() override;

    /// [main-thread]
    void Resolve(ScriptValue value);

    /// @param reason  UTF-8
    /// [main-thread]
    void Reject(std::string reason);

    /// [main-thread]
    State GetState() const noexcept { return mState; }

    /// Of a promise that was resolved.
    /// [main-thread]
    ScriptValue const& GetValue() const noexcept { return mValue; }

    /// Of a promise that was rejected.
    /// [main-thread]
    std::string const& GetReason() const noexcept { return mReason; }

private:
    State mState = State::kPending;
    ScriptValue mValue;
    std::string mReason;
};

} // namespace vynscripting
