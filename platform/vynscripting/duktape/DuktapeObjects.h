#pragma once

#include "vynscripting/definition/ScriptObjectDefinitionBase.h"
#include "vynscripting/ScriptObject.h"
#include "vynscripting/ScriptTypes.h"

#include <unordered_map>
#include <vector>

struct duk_hthread;

namespace vynscripting::duktape {

/// Script objects inside one heap: an object of the engine stands for each, whose prototype has the items of its class.
/// Which one stands for which is kept here, by the address in the heap, where no script can reach.
///
/// All functions but Get may raise errors of the engine, so they are called inside of a protected call.
class DuktapeObjects {
public:
    /// @param context  of the objects; not null
    explicit DuktapeObjects(ScriptContext const& context) : mContext(context) {}
    DuktapeObjects(DuktapeObjects const&) = delete;
    DuktapeObjects& operator=(DuktapeObjects const&) = delete;

    /// Gives scripts the classes that are defined by now.
    /// [main-thread]
    void PushClasses(duk_hthread* heap);

    /// Pushes what stands for the object; null for a null.
    /// [main-thread]
    void Push(duk_hthread* heap, ScriptObjectPtr const& object);

    /// Makes the object's items members of the object at the top, where they work without naming the object.
    /// [main-thread]
    void PutItems(duk_hthread* heap, ScriptObjectPtr const& object);

    /// The object for which what is at the index stands; null when it stands for none.
    /// [main-thread]
    ScriptObjectPtr Get(duk_hthread* heap, int index) const;

private:
    using Definition = definition::ScriptObjectDefinitionBase;

    // What a function of the engine calls; the function bears the index.
    struct BoundItem {
        Definition const* definition;
        definition::ScriptItem const* item;
        ScriptObjectPtr object; ///< null: the one that the script calls it on
    };

    static int CallItem(duk_hthread* heap);
    static int ForgetObject(duk_hthread* heap);

    int Call(duk_hthread* heap, BoundItem const& bound);
    void PushLasting(duk_hthread* heap, ScriptObjectPtr const& object);
    Definition const& DefinitionOf(duk_hthread* heap, ScriptObject const& object) const;
    void PushPrototype(duk_hthread* heap, Definition const& definition);
    void PutDefinedItems(duk_hthread* heap, Definition const& definition, ScriptObjectPtr const& object);
    void PutNamespaces(duk_hthread* heap, Definition const& definition);

    ScriptContext const& mContext;
    std::vector<BoundItem> mItems;
    std::unordered_map<Definition const*, void*> mPrototypes; ///< kept alive in the heap's stash
    std::unordered_map<void const*, ScriptObjectPtr> mObjects;
};

} // namespace vynscripting::duktape
