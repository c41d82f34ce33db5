#pragma once

#include "vyncore/Export.h"

#include <functional>
#include <optional>
#include <type_traits>

/// Calls that belong to the main thread, from whatever thread a script runs on.
namespace vynscripting::threads {

/// How long a call may wait for the main thread, in milliseconds.
/// [any-thread]
VYN_API unsigned GetSynchronousTimeout() noexcept;

/// [any-thread]
VYN_API void SetSynchronousTimeout(unsigned milliseconds) noexcept;

/// Names the calling thread the one that runs the main thread's call queue. Until then no thread is, and every call is
/// filed.
/// [main-thread]
VYN_API void SetUIThreadToCurrentThread() noexcept;

/// Runs the call on the main thread and returns when it has run. On that thread itself it runs at once; otherwise it is
/// filed in the call queue. What it throws comes out here. A call that isn't begun within the time is never begun:
/// InternalErrorException then, as when it can't be filed. One that has begun is waited for.
/// [any-thread]
VYN_API void DirectVoidCallOnUIThread(std::function<void()> const& call, unsigned milliseconds);

/// The same for a call that gives something.
/// [any-thread]
template <class Call>
std::invoke_result_t<Call const&> CallFunctionOnUIThread(Call const& call, unsigned milliseconds) {
    if constexpr (std::is_void_v<std::invoke_result_t<Call const&>>) {
        DirectVoidCallOnUIThread(call, milliseconds);
    } else {
        std::optional<std::invoke_result_t<Call const&>> result;
        DirectVoidCallOnUIThread([&] { result.emplace(call()); }, milliseconds);
        return std::move(*result);
    }
}

} // namespace vynscripting::threads
