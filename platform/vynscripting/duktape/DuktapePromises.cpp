#include "vynscripting/duktape/DuktapePromises.h"

#include "vynscripting/duktape/DuktapeEngine.h"
#include "vynscripting/duktape/DuktapeHeap.h"
#include "vynscripting/duktape/DuktapeValues.h"

#include <duktape.h>

#include <algorithm>

namespace vynscripting::duktape {

namespace {

constexpr char const* kPrototype = "promise";
// An array of two functions for each `then`.
constexpr char const* kHandlers = DUK_HIDDEN_SYMBOL("handlers");

// The stash's name for what lies at the address.
void PushStashKey(duk_hthread* heap, void const* address) {
    duk_push_sprintf(heap, "promise %p", address);
}

} // namespace

void DuktapePromises::Push(duk_hthread* heap, boost::intrusive_ptr<NativePromise> const& promise) {
    duk_push_object(heap);
    PushPrototype(heap);
    duk_set_prototype(heap, -2);
    duk_push_c_function(heap, Forget, 1);
    duk_set_finalizer(heap, -2);
    duk_push_array(heap);
    duk_put_prop_string(heap, -2, kHandlers);
    mKnown[duk_get_heapptr(heap, -1)] = promise;
    List(heap);
}

bool DuktapePromises::SettleOne(duk_hthread* heap) {
    auto const settled = std::ranges::find_if(mListed, [&](void* address) {
        auto const known = mKnown.find(address);
        return known == mKnown.end() || known->second->GetState() != NativePromise::State::kPending;
    });
    if (settled == mListed.end())
        return false;
    void* const address = *settled;
    auto const known = mKnown.find(address);
    boost::intrusive_ptr<NativePromise> const promise = known != mKnown.end() ? known->second : nullptr;
    duk_push_heapptr(heap, address);
    Unlist(heap, address);
    if (promise)
        CallHandlers(heap, *promise);
    duk_pop(heap);
    return true;
}

// The promise is at the top.
void DuktapePromises::CallHandlers(duk_hthread* heap, NativePromise const& promise) {
    bool const isRejected = promise.GetState() == NativePromise::State::kRejected;
    duk_get_prop_string(heap, -1, kHandlers);
    duk_push_array(heap);
    duk_put_prop_string(heap, -3, kHandlers);
    auto const count = static_cast<unsigned>(duk_get_length(heap, -1));
    bool isHeard = false;
    for (unsigned i = isRejected ? 1 : 0; i < count; i += 2) {
        duk_get_prop_index(heap, -1, i);
        if (duk_is_function(heap, -1)) {
            isHeard = true;
            if (isRejected)
                PushUTF8(heap, promise.GetReason());
            else
                DuktapeHeap::Of(heap).PushValue(heap, promise.GetValue());
            duk_call(heap, 1);
        }
        duk_pop(heap);
    }
    duk_pop(heap);
    if (isRejected && !isHeard)
        RaiseError(heap, DUK_ERR_ERROR, promise.GetReason());
}

int DuktapePromises::Then(duk_hthread* heap) {
    DuktapePromises& promises = DuktapeHeap::Of(heap).GetPromises();
    duk_push_this(heap);
    if (!promises.mKnown.contains(duk_get_heapptr(heap, -1)))
        RaiseError(heap, DUK_ERR_TYPE_ERROR, "then was called on what is no promise");
    duk_get_prop_string(heap, -1, kHandlers);
    for (int i = 0; i < 2; ++i) {
        duk_dup(heap, i);
        duk_put_prop_index(heap, -2, static_cast<duk_uarridx_t>(duk_get_length(heap, -2)));
    }
    duk_pop(heap);
    promises.List(heap);
    return 1;
}

int DuktapePromises::Forget(duk_hthread* heap) {
    DuktapeHeap::Of(heap).GetPromises().mKnown.erase(duk_get_heapptr(heap, 0));
    return 0;
}

void DuktapePromises::PushPrototype(duk_hthread* heap) {
    duk_push_heap_stash(heap);
    if (!duk_get_prop_string(heap, -1, kPrototype)) {
        duk_pop(heap);
        duk_push_object(heap);
        duk_push_c_function(heap, Then, 2);
        duk_put_prop_string(heap, -2, "then");
        duk_dup(heap, -1);
        duk_put_prop_string(heap, -3, kPrototype);
    }
    duk_remove(heap, -2);
}

// The promise is at the top and stays there.
void DuktapePromises::List(duk_hthread* heap) {
    void* const address = duk_get_heapptr(heap, -1);
    if (std::ranges::find(mListed, address) != mListed.end())
        return;
    duk_push_heap_stash(heap);
    PushStashKey(heap, address);
    duk_dup(heap, -3);
    duk_put_prop(heap, -3);
    duk_pop(heap);
    mListed.push_back(address);
}

void DuktapePromises::Unlist(duk_hthread* heap, void const* address) {
    std::erase(mListed, address);
    duk_push_heap_stash(heap);
    PushStashKey(heap, address);
    duk_del_prop(heap, -2);
    duk_pop(heap);
}

} // namespace vynscripting::duktape
