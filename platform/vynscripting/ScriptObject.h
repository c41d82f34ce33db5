#pragma once

#include "vyncore/Export.h"
#include "vyncore/utility/RefCountedObject.h"
#include "vynscripting/ScriptContext.h"
#include "vynscripting/ScriptTypes.h"

#include <string>

namespace vynscripting {

namespace definition {
class ScriptObjectDefinitionBase;
}

/// Base class of what scripts see as an object. Its class name leads to its definition, which says what a script can do
/// with it (ScriptObjectDefinition).
///
/// Life: made, by utils::CreateScriptObject or by hand; given its context and definition; Finalize; used by scripts. It
/// lives as long as somebody holds it: a script lets go when its engine goes, at the latest.
class VYN_API ScriptObject : public vyncore::utility::RefCountedObject {
public:
    /// @param className  of the definition that describes the object
    explicit ScriptObject(char const* className);
    ScriptObject(ScriptObject const&) = delete;
    ScriptObject& operator=(ScriptObject const&) = delete;
    ~ScriptObject() override;

    /// [any-thread]
    std::string const& GetObjectClassName() const noexcept { return mClassName; }

    /// Null before SetContext.
    /// [main-thread]
    ScriptContextHdl const& GetContextHdl() const noexcept { return mContext; }

    /// [main-thread]
    void SetContext(ScriptContextHdl context);

    /// Null for an object that was made by hand: its class name is looked up then.
    /// [main-thread]
    definition::ScriptObjectDefinitionBase const* GetDefinition() const noexcept { return mDefinition; }

    /// @param definition  lives as long as the object
    /// [main-thread]
    void SetDefinition(definition::ScriptObjectDefinitionBase const* definition) noexcept { mDefinition = definition; }

    /// The last step of making: the object may be used from now on. To be called once; an override calls this one.
    /// [main-thread]
    virtual void Finalize();

    /// [main-thread]
    bool IsFinalized() const noexcept { return mFinalized; }

    /// Whether a script is to take both objects for the same. Here: objects of one class are; null is equal to nothing.
    /// [main-thread]
    virtual bool IsEqual(boost::intrusive_ptr<ScriptObject> const& other) const;

private:
    std::string const mClassName;
    ScriptContextHdl mContext;
    definition::ScriptObjectDefinitionBase const* mDefinition = nullptr;
    bool mFinalized = false;
};

} // namespace vynscripting
