#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynscripting/ScriptObject.h"

namespace vynhost {

/// A filter that is known, as scripts see it: the row of `vynhost list`, read-only.
class CatalogueEntryObject : public vynscripting::ScriptObject {
public:
    CatalogueEntryObject();

    /// Adds the items to the definition that is being built.
    /// [main-thread]
    static void DefineObject();

    /// [any-thread]
    static char const* GetClassname() noexcept { return "CatalogueEntry"; }
    static char const* GetDescription() noexcept { return "A plug-in that is known, as vynhost list has it."; }

    /// @param filter  not null
    /// [main-thread]
    void Initialize(boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor> filter);

    /// Two entries are equal when their unique IDs are.
    /// [main-thread]
    bool IsEqual(boost::intrusive_ptr<vynscripting::ScriptObject> const& other) const override;

private:
    vynaudiofilterhost::AudioFilterDescriptor const& Get() const;
    vyncore::UString GetID() const;
    vyncore::UString GetName() const;
    vyncore::UString GetVendor() const;
    double GetVersion() const;
    vyncore::UString GetCategory() const;
    vyncore::UString GetTechnology() const;
    vyncore::UString GetPath() const;
    bool IsSynth() const;
    bool TakesMono() const;
    bool TakesStereo() const;
    bool MayBeMade() const;

    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor> mFilter;
};

} // namespace vynhost
