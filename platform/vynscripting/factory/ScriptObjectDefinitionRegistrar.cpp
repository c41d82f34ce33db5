#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"

#include <mutex>
#include <utility>

namespace vynscripting::factory {

namespace {

// Both are constant-initialised, so that registrars of any library come after them.
constinit std::mutex theMutex;
constinit ScriptObjectDefinitionRegistrar* theNewest = nullptr;

} // namespace

ScriptObjectDefinitionRegistrar::ScriptObjectDefinitionRegistrar(Enter enter) noexcept : mEnter(enter) {
    std::scoped_lock const lock(theMutex);
    mNext = std::exchange(theNewest, this);
}

ScriptObjectDefinitionRegistrar::~ScriptObjectDefinitionRegistrar() {
    std::scoped_lock const lock(theMutex);
    for (auto** link = &theNewest; *link; link = &(*link)->mNext) {
        if (*link == this) {
            *link = mNext;
            return;
        }
    }
}

void ScriptObjectDefinitionRegistrar::EnterNew(definition::ScriptDefinitions& definitions) {
    // A definition may ask for others while it is built, so that nothing is locked meanwhile.
    while (auto const* const taken = TakeNew())
        taken->mEnter(definitions);
}

ScriptObjectDefinitionRegistrar* ScriptObjectDefinitionRegistrar::TakeNew() noexcept {
    std::scoped_lock const lock(theMutex);
    auto* const taken = theNewest;
    if (taken)
        theNewest = taken->mNext;
    return taken;
}

} // namespace vynscripting::factory
