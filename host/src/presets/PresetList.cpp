#include "vynaudiofilterhost/presets/PresetList.h"

#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/StringUtils.h"

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::UTF8String;
using vyncore::string::UTF16to8;

PresetList::PresetList(PropList& list) : mList(&list) {}

PresetList::~PresetList() = default;

boost::intrusive_ptr<PresetData> PresetList::AppendPreset(UString const& name) {
    UTF8String const key = UTF16to8(name);
    if (mList->FindList(key))
        return nullptr;
    boost::intrusive_ptr<PresetData> preset(new PresetData(mList->CreateList(key)));
    mPresetListChanged(*this);
    return preset;
}

boost::intrusive_ptr<PresetData> PresetList::GetPreset(UString const& name) const {
    PropList* const section = mList->FindList(UTF16to8(name));
    return section ? new PresetData(*section) : nullptr;
}

void PresetList::GetPresetNames(std::set<UString>& names) const {
    names.clear();
    for (UTF8String const& key : mList->GetListNames())
        names.insert(vyncore::string::UTF8to16(key));
}

void PresetList::RemovePreset(UString const& name) {
    mList->RemoveValue(UTF16to8(name));
    mPresetListChanged(*this);
}

void PresetList::Clear() {
    mList->Clear();
    mPresetListChanged(*this);
}

} // namespace vynaudiofilterhost
