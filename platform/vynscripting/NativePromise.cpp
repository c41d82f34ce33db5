#include "vynscripting/NativePromise.h"

#include "vynscripting/ScriptObject.h"

#include <utility>

namespace vynscripting {

NativePromise::NativePromise() = default;
NativePromise::~NativePromise() = default;

void NativePromise::Resolve(ScriptValue value) {
    if (mState != State::kPending)
        return;
    mState = State::kResolved;
    mValue = std::move(value);
}

void NativePromise::Reject(std::string reason) {
    if (mState != State::kPending)
        return;
    mState = State::kRejected;
    mReason = std::move(reason);
}

} // namespace vynscripting
