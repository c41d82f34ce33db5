#include "vynscripting/duktape/DuktapeObjects.h"

#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/duktape/DuktapeArguments.h"
#include "vynscripting/duktape/DuktapeEngine.h"
#include "vynscripting/duktape/DuktapeErrors.h"
#include "vynscripting/duktape/DuktapeHeap.h"
#include "vynscripting/duktape/DuktapeValues.h"

#include <duktape.h>

#include <array>
#include <limits>
#include <utility>

namespace vynscripting::duktape {

namespace {

using Item = definition::ScriptItem;

// What an object of the host takes at most beside the one that stands for it, roughly.
constexpr std::size_t kHostBytes = 1024;

constexpr duk_uint_t kConstant = DUK_DEFPROP_HAVE_WC | DUK_DEFPROP_SET_ENUMERABLE;
constexpr duk_uint_t kConstantGetter = DUK_DEFPROP_CLEAR_CONFIGURABLE | DUK_DEFPROP_SET_ENUMERABLE;

// Gives the function at the top the name that shows in a stack.
void NameFunction(duk_hthread* heap, std::string const& name) {
    duk_push_string(heap, "name");
    PushUTF8(heap, name);
    duk_def_prop(heap, -3, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_FORCE);
}

// What isn't needed any more may be waiting to be collected.
void ChargeForObject(duk_hthread* heap) {
    DuktapeHeap& counted = DuktapeHeap::Of(heap).GetHeap();
    if (counted.Charge(kHostBytes))
        return;
    duk_gc(heap, 0);
    if (!counted.Charge(kHostBytes))
        RaiseError(heap, DUK_ERR_RANGE_ERROR, "alloc failed");
}

int RefuseConstruction(duk_hthread* heap) {
    RaiseError(heap, DUK_ERR_TYPE_ERROR, "objects of this class are made by the host alone");
}

// Pushes the member of that name of the object at the top, made new unless it is an object that can have members.
void PushNamespace(duk_hthread* heap, std::string const& name) {
    duk_get_prop_lstring(heap, -1, name.data(), name.size());
    if (duk_is_object(heap, -1))
        return;
    duk_pop(heap);
    duk_push_object(heap);
    duk_dup(heap, -1);
    duk_put_prop_lstring(heap, -3, name.data(), name.size());
}

} // namespace

void DuktapeObjects::PushClasses(duk_hthread* heap) {
    for (Definition const* const definition : definition::ScriptDefinitions::Get().GetAll()) {
        PushPrototype(heap, *definition);
        duk_pop(heap);
    }
}

void DuktapeObjects::Push(duk_hthread* heap, ScriptObjectPtr const& object) {
    if (!object) {
        duk_push_null(heap);
        return;
    }
    Definition const& definition = DefinitionOf(heap, *object);
    duk_push_object(heap);
    PushPrototype(heap, definition);
    duk_set_prototype(heap, -2);
    // Its own, since a script may give it another prototype.
    duk_push_c_function(heap, ForgetObject, 1);
    duk_set_finalizer(heap, -2);
    ChargeForObject(heap);
    mObjects[duk_get_heapptr(heap, -1)] = object;
}

void DuktapeObjects::PutItems(duk_hthread* heap, ScriptObjectPtr const& object) {
    PutDefinedItems(heap, DefinitionOf(heap, *object), object);
}

ScriptObjectPtr DuktapeObjects::Get(duk_hthread* heap, int index) const {
    auto const found = mObjects.find(duk_get_heapptr(heap, index));
    return found != mObjects.end() ? found->second : nullptr;
}

int DuktapeObjects::CallItem(duk_hthread* heap) {
    DuktapeObjects& objects = DuktapeHeap::Of(heap).GetObjects();
    // A copy: the call may bring further classes.
    BoundItem const bound = objects.mItems[static_cast<std::size_t>(duk_get_current_magic(heap))];
    return objects.Call(heap, bound);
}

int DuktapeObjects::ForgetObject(duk_hthread* heap) {
    // What goes with it may come here again.
    DuktapeEngine& engine = DuktapeHeap::Of(heap);
    auto const gone = engine.GetObjects().mObjects.extract(duk_get_heapptr(heap, 0));
    if (gone)
        engine.GetHeap().Discharge(kHostBytes);
    return 0;
}

int DuktapeObjects::Call(duk_hthread* heap, BoundItem const& bound) {
    DuktapeArguments const taken(heap, *this, bound.definition->GetObjectClassName(), *bound.item);
    ScriptObjectPtr object = bound.object;
    if (!object) {
        duk_push_this(heap);
        object = Get(heap, -1);
        duk_pop(heap);
    }
    if (!object)
        taken.Raise(DUK_ERR_TYPE_ERROR, "was used on what is no object of that class");
    std::array<ScriptValue, Item::kMaxParameters> values;
    auto const arguments = taken.Read(values);
    ScriptValue result;
    CallFailure failure;
    if (CatchFailure([&] { result = bound.item->Call(&mContext, *object, arguments); }, failure))
        taken.Raise(failure.errorClass, failure.text);
    auto const* const given = std::get_if<ScriptObjectPtr>(&result);
    if (given && bound.object && bound.item->GetKind() == Item::Kind::kProperty)
        PushLasting(heap, *given);
    else
        DuktapeHeap::Of(heap).PushValue(heap, result);
    return 1;
}

// A global variable stands for the same object of the script as long as it stands for the same object of the host.
void DuktapeObjects::PushLasting(duk_hthread* heap, ScriptObjectPtr const& object) {
    std::string const key = "given " + std::to_string(duk_get_current_magic(heap));
    duk_push_heap_stash(heap);
    duk_get_prop_string(heap, -1, key.c_str());
    if (object && Get(heap, -1) == object)
        return;
    duk_pop(heap);
    Push(heap, object);
    duk_dup(heap, -1);
    duk_put_prop_string(heap, -3, key.c_str());
}

DuktapeObjects::Definition const& DuktapeObjects::DefinitionOf(duk_hthread* heap, ScriptObject const& object) const {
    Definition const* definition = object.GetDefinition();
    if (!definition)
        definition = definition::ScriptDefinitions::Get().Find(object.GetObjectClassName());
    if (!definition)
        RaiseError(heap, DUK_ERR_ERROR, "the class " + object.GetObjectClassName() + " is not defined");
    return *definition;
}

void DuktapeObjects::PushPrototype(duk_hthread* heap, Definition const& definition) {
    auto const known = mPrototypes.find(&definition);
    if (known != mPrototypes.end()) {
        duk_push_heapptr(heap, known->second);
        return;
    }
    duk_push_object(heap);
    PutDefinedItems(heap, definition, nullptr);
    duk_push_string(heap, definition.GetObjectClassName().c_str());
    duk_put_prop_string(heap, -2, DUK_WELLKNOWN_SYMBOL("Symbol.toStringTag"));
    duk_push_heap_stash(heap);
    duk_dup(heap, -2);
    duk_put_prop_string(heap, -2, ("class " + definition.GetObjectClassName()).c_str());
    duk_pop(heap);
    mPrototypes.emplace(&definition, duk_get_heapptr(heap, -1));
    PutNamespaces(heap, definition);
}

void DuktapeObjects::PutDefinedItems(duk_hthread* heap, Definition const& definition, ScriptObjectPtr const& object) {
    for (auto const& item : definition.GetItems()) {
        if ((item->GetFlags() & definition::ScriptItemFlags::kScriptable) == 0)
            continue;
        constexpr std::size_t kMostItems = std::numeric_limits<std::int16_t>::max();
        if (mItems.size() > kMostItems)
            RaiseError(heap, DUK_ERR_RANGE_ERROR, "scripts know too many items");
        bool const isMethod = item->GetKind() == Item::Kind::kMethod;
        duk_push_string(heap, item->GetName().c_str());
        duk_push_c_function(heap, CallItem, DUK_VARARGS);
        duk_set_magic(heap, -1, static_cast<duk_int_t>(mItems.size()));
        NameFunction(heap, item->GetName());
        mItems.push_back({&definition, item.get(), object});
        // Global ones may be hidden by a script's own.
        if (isMethod)
            duk_def_prop(heap, -3, DUK_DEFPROP_HAVE_VALUE | (object ? DUK_DEFPROP_SET_WEC : kConstant));
        else
            duk_def_prop(heap, -3, DUK_DEFPROP_HAVE_GETTER | (object ? DUK_DEFPROP_SET_EC : kConstantGetter));
    }
}

// The prototype is at the top and stays there.
void DuktapeObjects::PutNamespaces(duk_hthread* heap, Definition const& definition) {
    duk_idx_t const prototype = duk_get_top_index(heap);
    duk_push_global_object(heap);
    for (auto const& space : definition.GetNamespaces()) {
        if (space.flags != Definition::kNamespaceIsClass) {
            PushNamespace(heap, space.name);
            continue;
        }
        duk_push_c_function(heap, RefuseConstruction, DUK_VARARGS);
        NameFunction(heap, space.name);
        duk_push_string(heap, "prototype");
        duk_dup(heap, prototype);
        duk_def_prop(heap, -3, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_FORCE);
        duk_put_prop_lstring(heap, -2, space.name.data(), space.name.size());
    }
    duk_set_top(heap, prototype + 1);
}

} // namespace vynscripting::duktape
