#pragma once

#include "vyncore/Export.h"
#include "vynscripting/definition/ScriptItem.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

namespace vynscripting::definition {

/// A namespace that leads to a class, outermost first.
struct ScriptNamespace {
    std::string name;
    unsigned flags;
};

/// What a script can do with the objects of one class. Its items are added while it is being built, once, and constant
/// from then on.
class VYN_API ScriptObjectDefinitionBase {
public:
    /// The definition that is being built; null outside of that.
    /// [main-thread]
    static ScriptObjectDefinitionBase* sCurrent;

    /// The flags of the namespace that stands for the class itself. Scripts see it as a function with the class's
    /// prototype, for instanceof; they can't make objects by it.
    static constexpr unsigned kNamespaceIsClass = 0x90000;

    ScriptObjectDefinitionBase(char const* className, char const* description);
    ScriptObjectDefinitionBase(ScriptObjectDefinitionBase const&) = delete;
    ScriptObjectDefinitionBase& operator=(ScriptObjectDefinitionBase const&) = delete;
    virtual ~ScriptObjectDefinitionBase();

    /// [main-thread]
    std::string const& GetObjectClassName() const noexcept { return mClassName; }
    std::string const& GetDescription() const noexcept { return mDescription; }
    std::vector<ScriptNamespace> const& GetNamespaces() const noexcept { return mNamespaces; }
    std::vector<std::unique_ptr<ScriptItem>> const& GetItems() const noexcept { return mItems; }

    /// Adds a namespace inside those that are there already; one of that name gets the flags.
    /// [main-thread]
    void AddOrModifyNamespace(char const* name, unsigned flags);

    /// Adds a property or a method; one that has its name is replaced in its place. Null adds nothing.
    /// [main-thread]
    void AddProperty(std::unique_ptr<ScriptItem> item);

    /// Has the class fill the definition.
    /// [main-thread]
    void Build();

    /// A new object of the class, ready for use in the context.
    /// [main-thread]
    virtual boost::intrusive_ptr<ScriptObject> CreateFactoryInstance(ScriptContextHdl const& context) const = 0;

protected:
    /// Calls the class's DefineObject.
    /// [main-thread]
    virtual void Define() = 0;

private:
    std::string const mClassName;
    std::string const mDescription;
    std::vector<ScriptNamespace> mNamespaces;
    std::vector<std::unique_ptr<ScriptItem>> mItems;
};

} // namespace vynscripting::definition
