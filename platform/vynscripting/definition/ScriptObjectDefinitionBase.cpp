#include "vynscripting/definition/ScriptObjectDefinitionBase.h"

#include "vynscripting/ScriptObject.h"

#include <algorithm>
#include <utility>

namespace vynscripting::definition {

ScriptObjectDefinitionBase* ScriptObjectDefinitionBase::sCurrent = nullptr;

ScriptObjectDefinitionBase::ScriptObjectDefinitionBase(char const* className, char const* description)
    : mClassName(className), mDescription(description) {}

ScriptObjectDefinitionBase::~ScriptObjectDefinitionBase() = default;

void ScriptObjectDefinitionBase::AddOrModifyNamespace(char const* name, unsigned flags) {
    auto const known =
        std::ranges::find_if(mNamespaces, [&](ScriptNamespace const& listed) { return listed.name == name; });
    if (known != mNamespaces.end())
        known->flags = flags;
    else
        mNamespaces.push_back({name, flags});
}

void ScriptObjectDefinitionBase::AddProperty(std::unique_ptr<ScriptItem> item) {
    if (!item)
        return;
    auto const known =
        std::ranges::find_if(mItems, [&](auto const& listed) { return listed->GetName() == item->GetName(); });
    if (known != mItems.end())
        *known = std::move(item);
    else
        mItems.push_back(std::move(item));
}

void ScriptObjectDefinitionBase::Build() {
    // A class may have another one built on the way.
    struct Restore {
        ScriptObjectDefinitionBase* const before;
        ~Restore() { sCurrent = before; }
    } const restore{std::exchange(sCurrent, this)};
    Define();
}

} // namespace vynscripting::definition
