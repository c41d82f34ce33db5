#include "vynhost/CatalogueEntryObject.h"

#include "vynhost/KnownFilters.h"
#include "vynhost/ScriptItems.h"
#include "vynhost/TechnologyName.h"

#include "vyncore/strings/StringUtils.h"

#include <utility>

namespace vynhost {

namespace {

ScriptItems<CatalogueEntryObject>::Registrar const kRegistrar(&ScriptItems<CatalogueEntryObject>::Enter);

} // namespace

CatalogueEntryObject::CatalogueEntryObject() : ScriptObject(GetClassname()) {}

void CatalogueEntryObject::DefineObject() {
    using Self = CatalogueEntryObject;
    ScriptItems<Self> items;
    items.Property("id", "The unique ID, which open takes.", &Self::GetID);
    items.Property("name", "The name.", &Self::GetName);
    items.Property("vendor", "Who made it.", &Self::GetVendor);
    items.Property("version", "The version, as a number of the plug-in's own.", &Self::GetVersion);
    items.Property("category", "The name of the category.", &Self::GetCategory);
    items.Property("technology", "The format: \"VST3\" or \"VST\".", &Self::GetTechnology);
    items.Property("path", "The path of the module.", &Self::GetPath);
    items.Property("synth", "Whether it is an instrument.", &Self::IsSynth);
    items.Property("mono", "Whether it takes mono.", &Self::TakesMono);
    items.Property("stereo", "Whether it takes stereo.", &Self::TakesStereo);
    items.Property("enabled", "Whether it may be opened.", &Self::MayBeMade);
}

void CatalogueEntryObject::Initialize(boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor> filter) {
    mFilter = std::move(filter);
}

bool CatalogueEntryObject::IsEqual(boost::intrusive_ptr<vynscripting::ScriptObject> const& other) const {
    if (!ScriptObject::IsEqual(other))
        return false;
    auto const* const entry = dynamic_cast<CatalogueEntryObject const*>(other.get());
    return entry && entry->GetID() == GetID();
}

vynaudiofilterhost::AudioFilterDescriptor const& CatalogueEntryObject::Get() const {
    if (!mFilter)
        throw vynscripting::ParameterErrorException();
    return *mFilter;
}

vyncore::UString CatalogueEntryObject::GetID() const {
    return Get().GetUniqueID();
}

vyncore::UString CatalogueEntryObject::GetName() const {
    return Get().GetName();
}

vyncore::UString CatalogueEntryObject::GetVendor() const {
    return Get().GetVendorString();
}

double CatalogueEntryObject::GetVersion() const {
    return Get().GetVersion();
}

vyncore::UString CatalogueEntryObject::GetCategory() const {
    return Get().GetCategoryName();
}

vyncore::UString CatalogueEntryObject::GetTechnology() const {
    return vyncore::string::UTF8to16(TechnologyName(Get().GetLocator().GetTechnologyType()));
}

vyncore::UString CatalogueEntryObject::GetPath() const {
    return Get().GetLocator().GetPath();
}

bool CatalogueEntryObject::IsSynth() const {
    return Get().IsSynth();
}

bool CatalogueEntryObject::TakesMono() const {
    return Get().GetSupportsMono();
}

bool CatalogueEntryObject::TakesStereo() const {
    return Get().GetSupportsStereo();
}

bool CatalogueEntryObject::MayBeMade() const {
    return IsEnabled(Get());
}

} // namespace vynhost
