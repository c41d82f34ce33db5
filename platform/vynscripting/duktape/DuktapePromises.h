#pragma once

#include "vynscripting/NativePromise.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <unordered_map>
#include <vector>

struct duk_hthread;

namespace vynscripting::duktape {

/// Promises inside one heap: objects with a method `then(resolved, rejected)`, whose functions are called with the
/// value or the reason when the promise is settled. Either may be left out; `then` gives the promise.
///
/// Push and Settle may raise errors of the engine, so they are called inside of a protected call.
class DuktapePromises {
public:
    DuktapePromises() = default;
    DuktapePromises(DuktapePromises const&) = delete;
    DuktapePromises& operator=(DuktapePromises const&) = delete;

    /// Pushes what stands for a promise that a call has given.
    /// [main-thread]
    void Push(duk_hthread* heap, boost::intrusive_ptr<NativePromise> const& promise);

    /// Calls what is wanted for one promise that is settled; false when there is none. Raises an error for one that was
    /// rejected while nobody wanted to know.
    /// [main-thread]
    bool SettleOne(duk_hthread* heap);

    /// Whether promises are waiting, for a result or for SettleOne.
    /// [main-thread]
    bool IsEmpty() const noexcept { return mListed.empty(); }

private:
    static int Then(duk_hthread* heap);
    static int Forget(duk_hthread* heap);
    static void PushPrototype(duk_hthread* heap);

    void List(duk_hthread* heap);
    void Unlist(duk_hthread* heap, void const* address);
    void CallHandlers(duk_hthread* heap, NativePromise const& promise);

    std::unordered_map<void const*, boost::intrusive_ptr<NativePromise>> mKnown;
    std::vector<void*> mListed; ///< in order; kept alive in the heap's stash
};

} // namespace vynscripting::duktape
