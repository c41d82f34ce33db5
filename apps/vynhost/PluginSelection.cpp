#include "vynhost/PluginSelection.h"

#include "vynhost/CommandError.h"
#include "vynhost/PluginLookup.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <vector>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vyncore::UString;

namespace {

using ClassIDs = std::vector<UString>;

std::string ListIDs(ClassIDs const& classIDs) {
    std::string list;
    for (UString const& id : classIDs)
        list += (list.empty() ? "" : ", ") + vyncore::string::UTF16to8(id);
    return list;
}

// The ID without the number of the technology, in one letter case.
UString Essence(UString const& classID) {
    std::size_t const colon = classID.find(u':');
    return vyncore::string::UpperCase(colon == UString::npos ? classID : classID.substr(colon + 1));
}

UString ChooseClass(std::string const& modulePath, ClassIDs const& classIDs, std::string const& wanted) {
    if (wanted.empty() && classIDs.size() == 1)
        return classIDs.front();
    if (wanted.empty())
        throw CommandError(ExitStatus::kWrongUsage, CommandError::Subject::kPlugin, modulePath,
                           "holds several plug-ins, choose one with --class: " + ListIDs(classIDs));
    UString const essence = Essence(vyncore::string::UTF8to16(wanted));
    auto const found = std::ranges::find(classIDs, essence, Essence);
    if (found == classIDs.end())
        throw CommandError::OfPlugin(modulePath, "has no class " + wanted + "; it has " + ListIDs(classIDs));
    return *found;
}

} // namespace

PluginSelection::PluginSelection(std::string const& modulePath, std::string const& classID) : mModulePath(modulePath) {
    Open(FindPlugin(modulePath, classID));
}

PluginSelection::PluginSelection(FoundPlugin const& found) : mModulePath(found.modulePath) {
    Open(found);
}

void PluginSelection::Open(FoundPlugin const& found) {
    UString reason;
    mModule = vynaudiofilterhost::OpenPluginModule(vyncore::string::UTF8to16(found.modulePath), reason);
    if (!mModule)
        throw CommandError::OfPlugin(mModulePath, vyncore::string::UTF16to8(reason));
    ClassIDs classIDs;
    if (!mModule->GetPluginInfo(classIDs) || classIDs.empty()) {
        std::string const refusal = vyncore::string::UTF16to8(mModule->GetRefusalReason());
        throw CommandError::OfPlugin(mModulePath, refusal.empty() ? "holds no audio plug-in" : refusal);
    }
    mClassID = ChooseClass(mModulePath, classIDs, found.classID);
}

PluginSelection::~PluginSelection() = default;

vynaudiofilterhost::PluginLocator PluginSelection::GetLocator() const {
    vynaudiofilterhost::PluginLocator ofClass;
    ofClass.FromString(mClassID);
    return {ofClass.GetTechnologyType(), mModule->GetPath()};
}

boost::intrusive_ptr<AudioFilter> PluginSelection::CreateFilter() const {
    boost::intrusive_ptr<AudioFilter> filter = mModule->CreateAudioFilter(mClassID);
    if (!filter)
        throw CommandError::OfPlugin(mModulePath, "the plug-in of class " + vyncore::string::UTF16to8(mClassID) +
                                                      " could not be made");
    return filter;
}

} // namespace vynhost
