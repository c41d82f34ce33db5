#pragma once

#include "vynscripting/definition/ScriptObjectDefinitionBase.h"
#include "vynscripting/ScriptObject.h"

namespace vynscripting::definition {

/// The definition of a class that says everything itself, by static functions: GetClassname, GetDescription, and
/// DefineObject, which adds namespaces and items to ScriptObjectDefinitionBase::sCurrent.
template <class Object>
class ScriptObjectDefinition final : public ScriptObjectDefinitionBase {
public:
    ScriptObjectDefinition() : ScriptObjectDefinitionBase(Object::GetClassname(), Object::GetDescription()) {}

    /// [main-thread]
    boost::intrusive_ptr<ScriptObject> CreateFactoryInstance(ScriptContextHdl const& context) const override {
        boost::intrusive_ptr<Object> const object(new Object());
        object->SetContext(context);
        object->SetDefinition(this);
        object->Finalize();
        return object;
    }

private:
    void Define() override { Object::DefineObject(); }
};

} // namespace vynscripting::definition
