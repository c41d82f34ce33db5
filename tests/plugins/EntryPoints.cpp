#include "plugins/FixtureController.h"

// Compiled once for each fixture module. The build says which entry points a module has: VYN_FIXTURE_MODULE_ENTRY and
// VYN_FIXTURE_INIT_DLL (each defined as the result it gives), VYN_FIXTURE_FACTORY.

using namespace vynfixtures;

namespace vynfixtures {

ModuleTraits const kModuleTraits{VYN_FIXTURE_NUMBER, VYN_FIXTURE_SINGLE_OBJECT, VYN_FIXTURE_AUDIO_CLASSES};

}

extern "C" {

SMTG_EXPORT_SYMBOL FixtureExports const* FixtureEntry() {
    static Steinberg::TUID classID;
    static FixtureExports const exports = {
        .configure =
            [](FixtureConfiguration const* configuration) {
                ModuleState::Get().configuration = *configuration;
                ModuleState::Get().latency = configuration->latency;
                ModuleState::Get().throwingCalls = 0;
            },
        .setLatency = [](unsigned samples) { ModuleState::Get().latency = samples; },
        .calls = RecordedCalls,
        .clearCalls = ClearRecordedCalls,
        .setSink = SetRecordSink,
        .snapshot = []() -> FixtureSnapshot const* { return &ModuleState::Get().snapshot; },
        .liveObjects = []() -> int { return ModuleState::Get().liveObjects; },
        .classId =
            [](int index) {
                CopyClassID(kAudioClass, index, classID);
                return reinterpret_cast<unsigned char const*>(classID);
            },
        .factoryReferences = GetFactoryReferences,
        .callHost = FixtureController::CallHost,
    };
    return &exports;
}

#ifdef VYN_FIXTURE_MODULE_ENTRY
SMTG_EXPORT_SYMBOL bool ModuleEntry(void* handle) {
    Record(FixtureObject::Module, "ModuleEntry", {handle != nullptr});
    return VYN_FIXTURE_MODULE_ENTRY;
}

SMTG_EXPORT_SYMBOL bool ModuleExit() {
    Record(FixtureObject::Module, "ModuleExit");
    return true;
}
#endif

#ifdef VYN_FIXTURE_INIT_DLL
SMTG_EXPORT_SYMBOL bool InitDll() {
    Record(FixtureObject::Module, "InitDll");
    return VYN_FIXTURE_INIT_DLL;
}

SMTG_EXPORT_SYMBOL bool ExitDll() {
    Record(FixtureObject::Module, "ExitDll");
    return true;
}
#endif

#ifdef VYN_FIXTURE_FACTORY
SMTG_EXPORT_SYMBOL Steinberg::IPluginFactory* PLUGIN_API GetPluginFactory() {
    Record(FixtureObject::Module, "GetPluginFactory");
    if (ModuleState::Get().configuration.Fails(FixtureFault::NullFactory))
        return nullptr;
    GetFactory()->addRef();
    return GetFactory();
}
#endif

} // extern "C"
