#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"

#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vynaudiofilterhost/VST/src/StaticAudioMasterCallback.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"
#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/utility/ModuleFunctions.h"

#include <utility>

namespace vynaudiofilterhost::vst {

using vyncore::UString;
using vyncore::filesupport::File;
using vyncore::utility::GetFunctionPointerFromModuleImpl;

namespace {

EntryFunction FindEntry(HINSTANCE__* module) {
    for (char const* const name : {"VSTPluginMain", "main"}) {
        if (auto* const found = GetFunctionPointerFromModuleImpl(module, name))
            return reinterpret_cast<EntryFunction>(found);
    }
    return nullptr;
}

UString DecimalText(unsigned number) {
    vyncore::oUTF16StringStream stream;
    stream << number;
    return stream.str();
}

bool IsCount(std::int32_t count, std::int32_t limit) {
    return count >= 0 && count <= limit;
}

/// What is wrong with what the effect says of itself; null when nothing is. Nothing is sized by it before.
char16_t const* FindFault(AEffect const& effect) {
    if (!effect.dispatcher)
        return u"makes an effect without a dispatcher";
    if (!IsCount(effect.numInputs, kMaxVSTChannels) || !IsCount(effect.numOutputs, kMaxVSTChannels))
        return u"states an impossible number of channels";
    if (!IsCount(effect.numParams, kMaxParameters))
        return u"states an impossible number of parameters";
    if (!IsCount(effect.numPrograms, kMaxPrograms))
        return u"states an impossible number of programs";
    return nullptr;
}

// What was made is ended: it may have begun something of its own.
char16_t const* CloseIfFaulty(AEffect* effect) {
    char16_t const* const fault = FindFault(*effect);
    if (fault)
        DispatchTo(effect, effClose, 0, 0, nullptr, 0.0f);
    return fault;
}

// Straight to the dispatcher: what an effect throws that is asked who it is goes to whoever asked.
std::intptr_t Ask(AEffect* effect, EffectOpcode opcode, void* ptr = nullptr) {
    return effect->dispatcher ? effect->dispatcher(effect, opcode, 0, 0, ptr, 0.0f) : 0;
}

} // namespace

VSTPluginModule::VSTPluginModule(UString const& path) : PluginModule(path, true) {}

bool VSTPluginModule::Load() {
    if (GetOSModule() || !PluginModule::Load())
        return false;
    mEntry = FindEntry(GetOSModule());
    if (mEntry)
        return true;
    SetLoadError(u"the module has no VST 2.x entry function");
    PluginModule::Unload();
    return false;
}

void VSTPluginModule::Unload() {
    if (!GetOSModule() || mKeptLoaded || !mHold.expired())
        return;
    mEntry = nullptr;
    PluginModule::Unload();
}

AEffect* VSTPluginModule::MakeEffect(std::int32_t number) {
    SetCurrentShellPluginID(number);
    return mEntry(StaticAudioMasterCallback);
}

// The filter keeps the module, and so its code, beyond the cache.
std::shared_ptr<void const> VSTPluginModule::Hold() {
    auto hold = mHold.lock();
    if (!hold) {
        hold = std::make_shared<boost::intrusive_ptr<VSTPluginModule>>(this);
        mHold = hold;
    }
    return hold;
}

boost::intrusive_ptr<AudioFilter> VSTPluginModule::CreateAudioFilter(UString const& id) {
    if (!mEntry)
        return nullptr;
    unsigned number = 0;
    ParseVSTUniqueID(id, number);
    AEffect* const effect = MakeEffect(static_cast<std::int32_t>(number));
    // One that a filter has already would be closed twice.
    if (!effect || EffectRegistry::Contains(effect) || CloseIfFaulty(effect))
        return nullptr;
    boost::intrusive_ptr<VSTAudioFilter> const filter(
        new VSTAudioFilter(MakeVSTUniqueID(number, GetPath()), GetPath(), effect, !mShell));
    filter->KeepAlive(Hold());
    return filter;
}

boost::intrusive_ptr<PluginModuleInfo> VSTPluginModule::Refuse(char16_t const* reason) {
    SetRefusalReason(reason);
    return nullptr;
}

boost::intrusive_ptr<PluginModuleInfo> VSTPluginModule::GetPluginInfo(std::vector<UString>& ids) {
    ids.clear();
    SetRefusalReason(u"threw an exception when it was asked what it is");
    if (!mEntry)
        return Refuse(u"is not loaded");
    AEffect* const effect = MakeEffect(0);
    if (!effect)
        return Refuse(u"makes no effect");
    if (EffectRegistry::Contains(effect))
        return Refuse(u"makes one effect for all");
    if (effect->magic != kEffectMagic)
        return Refuse(u"makes something that is no VST 2.x effect");
    if (char16_t const* const fault = CloseIfFaulty(effect))
        return Refuse(fault);
    std::vector<UString> found;
    auto info = ReadInfo(effect, found);
    ids.swap(found);
    return info;
}

boost::intrusive_ptr<PluginModuleInfo> VSTPluginModule::ReadInfo(AEffect* effect, std::vector<UString>& ids) {
    // It opens the effect, and closes it at its end.
    boost::intrusive_ptr<VSTAudioFilter> const opened(
        new VSTAudioFilter(MakeVSTUniqueID(effect->uniqueID, GetPath()), GetPath(), effect, true));
    UString name = ReadEffectName(effect);
    if (name.empty())
        name = File(GetPath()).GetTitle();
    UString const vendor = ReadVendorString(effect);
    auto const version = static_cast<unsigned>(Ask(effect, effGetVstVersion));
    if (IsBanned(*effect, version))
        return Refuse(u"is on the list of unsupported plug-ins");
    mShell = version > 1 && Ask(effect, effGetPlugCategory) == kPlugCategShell;
    if (mShell)
        ListShell(effect, ids);
    else
        ids.push_back(MakeVSTUniqueID(effect->uniqueID, GetPath()));
    SetRefusalReason(ids.empty() ? UString(u"is a shell that lists no plug-in, or has no end") : UString());
    return new PluginModuleInfo(PluginLocator(kTechnologyVST, GetPath()), name, vendor, version, kTechnologyVST, true,
                                mShell);
}

bool VSTPluginModule::IsBanned(AEffect const& effect, unsigned version) const {
    return BannedPluginManager::GetInstance().IsPluginBannedStatically(
        File(GetPath()).GetName(), DecimalText(effect.uniqueID), DecimalText(version));
}

void VSTPluginModule::ListShell(AEffect* effect, std::vector<UString>& ids) const {
    EffectNameText name; // of no use: effects are asked for their names themselves
    SetCurrentShellPluginID(0);
    // A shell that never comes to an end has lied.
    while (ids.size() < static_cast<std::size_t>(kMaxClasses)) {
        auto const number = static_cast<unsigned>(Ask(effect, effShellGetNextPlugin, name.GetBuffer()));
        if (number == 0)
            return;
        ids.push_back(MakeVSTUniqueID(number, GetPath()));
    }
    ids.clear();
}

} // namespace vynaudiofilterhost::vst
