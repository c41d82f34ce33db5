#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassID.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassInfo.h"
#include "vynaudiofilterhost/VST3/src/VST3FactoryGuid.h"
#include "vynaudiofilterhost/VST3/src/VST3SubCategories.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/utility/ModuleFunctions.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using vyncore::UString;
using vyncore::debug::DebugTrace;
using vyncore::debug::TracePoint;
using vyncore::utility::GetFunctionPointerFromModuleImpl;

namespace {

constexpr int kProgress = 6;

TracePoint theLoadTrace(kProgress, "VST3PluginModule::Load");
TracePoint theUnloadTrace(kProgress, "VST3PluginModule::Unload");
TracePoint theInitTrace(kProgress, "InitPluginModule");
TracePoint theTerminateTrace(kProgress, "TerminatePluginModule");
TracePoint theInfoTrace(kProgress, "VST3PluginModule::GetPluginInfo");
TracePoint theCreateTrace(kProgress, "VST3PluginModule::CreateAudioFilter");

using PlainFunction = bool(PLUGIN_API*)();
using ModuleEntryFunction = bool(PLUGIN_API*)(void*);
using FactoryFunction = Steinberg::IPluginFactory*(PLUGIN_API*)();

template <class Function>
Function FindExport(HINSTANCE__* module, char const* name) {
    return reinterpret_cast<Function>(GetFunctionPointerFromModuleImpl(module, name));
}

UString PathText(UString const& path) {
    return u"Path:" + path;
}

} // namespace

VST3PluginModule::VST3PluginModule(UString const& path) : PluginModule(path, true) {}

bool VST3PluginModule::Load() {
    DebugTrace(theLoadTrace, [this] { return PathText(GetPath()); });
    if (GetOSModule())
        return false;
    if (!PluginModule::Load())
        return false;
    try {
        if (!InitModule())
            return FailToLoad(u"the module's entry point failed");
        if (!AskForFactory())
            return FailToLoad(u"the module has no VST3 factory");
    } catch (...) {
        return FailToLoad(u"the module's start-up code threw an exception");
    }
    return true;
}

bool VST3PluginModule::InitModule() {
    mEntryPoint = EntryPoint::kNone;
    if (auto const initDll = FindExport<PlainFunction>(GetOSModule(), "InitDll")) {
        DebugTrace(theInitTrace, [] { return "Calling InitDll"; });
        mEntryPoint = EntryPoint::kInitDll;
        return initDll();
    }
    if (auto const moduleEntry = FindExport<ModuleEntryFunction>(GetOSModule(), "ModuleEntry")) {
        DebugTrace(theInitTrace, [] { return "Calling ModuleEntry"; });
        mEntryPoint = EntryPoint::kModuleEntry;
        return moduleEntry(GetOSModule());
    }
    return true;
}

bool VST3PluginModule::AskForFactory() {
    auto const getFactory = FindExport<FactoryFunction>(GetOSModule(), "GetPluginFactory");
    Steinberg::IPluginFactory* const factory = getFactory ? getFactory() : nullptr;
    if (!factory)
        return false;
    factory->addRef();
    mFactory = factory;
    return true;
}

bool VST3PluginModule::FailToLoad(UString const& reason) {
    DebugTrace(theLoadTrace, [] { return "Unloading due to error"; });
    SetLoadError(reason);
    PluginModule::Unload();
    return false;
}

void VST3PluginModule::Unload() {
    DebugTrace(theUnloadTrace, [this] { return PathText(GetPath()); });
    if (!GetOSModule())
        return;
    // Guarded step by step: the other modules want their turn, whatever this one throws.
    if (Steinberg::IPluginFactory* const factory = std::exchange(mFactory, nullptr))
        Guarded([factory] { factory->release(); });
    Guarded([this] { TerminateModule(); });
    PluginModule::Unload();
}

void VST3PluginModule::TerminateModule() {
    if (auto const exitDll = FindExport<PlainFunction>(GetOSModule(), "ExitDll")) {
        DebugTrace(theTerminateTrace, [] { return "Calling ExitDll"; });
        exitDll();
    }
    if (mEntryPoint != EntryPoint::kModuleEntry)
        return;
    if (auto const moduleExit = FindExport<PlainFunction>(GetOSModule(), "ModuleExit")) {
        DebugTrace(theTerminateTrace, [] { return "Calling ModuleExit"; });
        moduleExit();
    }
}

boost::intrusive_ptr<AudioFilter> VST3PluginModule::CreateAudioFilter(UString const& classID) {
    return CreateVST3Filter(classID);
}

boost::intrusive_ptr<PluginModuleInfo> VST3PluginModule::GetPluginInfo(std::vector<UString>& classIDs) {
    DebugTrace(theInfoTrace, [] { return "entry"; });
    SetRefusalReason(UString());
    boost::intrusive_ptr<PluginModuleInfo> info;
    std::vector<UString> found;
    try {
        info = ReadInfo(found);
    } catch (...) {
        // A module that throws when it is asked who it is, is refused.
        found.clear();
        SetRefusalReason(u"threw an exception when it was asked what it holds");
    }
    classIDs.swap(found);
    DebugTrace(theInfoTrace, [] { return "done"; });
    return info;
}

boost::intrusive_ptr<PluginModuleInfo> VST3PluginModule::ReadInfo(std::vector<UString>& classIDs) {
    int32 const count = mFactory ? PlausibleCount(mFactory->countClasses(), kMaxClasses) : 0;
    if (count < 1) {
        SetRefusalReason(u"holds no class");
        return nullptr;
    }
    Steinberg::PFactoryInfo factoryInfo;
    UString vendor;
    if (mFactory->getFactoryInfo(&factoryInfo) == kResultOk)
        vendor = vyncore::string::UTF8to16(TextOf(factoryInfo.vendor));
    // A VST3 module has no ID and no version of its own to be banned by.
    vyncore::filesupport::File const file(GetPath());
    if (BannedPluginManager::GetInstance().IsPluginBannedStatically(file.GetName(), u"none", u"0")) {
        SetRefusalReason(u"is on the list of unsupported plug-ins");
        return nullptr;
    }
    classIDs = CollectAudioClassIDs(count);
    return new PluginModuleInfo(PluginLocator(kTechnologyVST3, GetPath()), file.GetTitle(), vendor, 0, kTechnologyVST3,
                                true, classIDs.size() > 1);
}

std::vector<UString> VST3PluginModule::CollectAudioClassIDs(int32 count) const {
    std::vector<UString> found;
    for (int32 index = 0; index < count; ++index) {
        Steinberg::PClassInfo classInfo;
        if (mFactory->getClassInfo(index, &classInfo) == kResultOk &&
            TextOf(classInfo.category) == std::string_view(kVstAudioEffectClass))
            found.push_back(FormatVST3ClassID(classInfo.cid));
    }
    return found;
}

bool VST3PluginModule::FindClass(UString const& classID, Steinberg::PClassInfo& classInfo) const {
    Steinberg::TUID cid;
    ParseVST3ClassID(classID, cid);
    int32 const count = PlausibleCount(mFactory->countClasses(), kMaxClasses);
    DebugTrace(theCreateTrace, [count] {
        vyncore::oUTF16StringStream stream;
        stream << "mFactory->countClasses(): " << count;
        return stream.str();
    });
    for (int32 index = 0; index < count; ++index) {
        classInfo = Steinberg::PClassInfo();
        if (mFactory->getClassInfo(index, &classInfo) == kResultOk && std::memcmp(classInfo.cid, cid, sizeof cid) == 0)
            return true;
    }
    return false;
}

boost::intrusive_ptr<VST3AudioFilter> VST3PluginModule::CreateVST3Filter(UString const& classID) {
    DebugTrace(theCreateTrace, [&] { return u"ID: " + classID + u", Path:" + GetPath(); });
    if (!mFactory)
        return nullptr;
    try {
        Steinberg::PClassInfo classInfo;
        if (!FindClass(classID, classInfo))
            return nullptr;
        DebugTrace(theCreateTrace, [] { return "got class info, creating instance"; });
        boost::intrusive_ptr<VST3AudioFilter> filter(new VST3AudioFilter(mFactory, classInfo));
        DebugTrace(theCreateTrace, [] { return "instance created"; });
        return filter;
    } catch (...) {
        return nullptr;
    }
}

boost::intrusive_ptr<AudioFilterDescriptor>
VST3PluginModule::CreateDescriptorFromClassInfo(PluginLocator const& locator, UString const& classID,
                                                bool internalFilter) {
    Steinberg::PClassInfo classInfo;
    if (!mFactory || !FindClass(classID, classInfo))
        return nullptr;
    VST3ClassInfo const facts = ReadClassInfo(classInfo.cid, *mFactory);
    SubCategoryVerdict const kind = CategoryFromSubCategories(facts.subCategories, internalFilter);
    boost::intrusive_ptr<AudioFilterDescriptor> descriptor(new AudioFilterDescriptor(
        locator, facts.name, facts.vendor, 0, kind.category, classID, GetVST3FactoryGuid(), kind.instrument));
    if (!kind.instrument) {
        descriptor->SetSupportsMono(true);
        descriptor->SetSupportsStereo(true);
    }
    return descriptor;
}

} // namespace vynaudiofilterhost::vst3
