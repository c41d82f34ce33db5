#include "BareScan.h"

#include "OpenEachModule.h"

#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <cstring>

namespace vynbench {

using namespace Steinberg;

namespace {

/// What classes are initialised with.
class NoHost final : public FUnknown {
public:
    tresult PLUGIN_API queryInterface(TUID const, void** object) override {
        *object = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

NoHost theHost;

bool MakeClass(IPluginFactory* factory, PClassInfo const& info) {
    bool const isComponent = std::strcmp(info.category, kVstAudioEffectClass) == 0;
    void* made = nullptr;
    FIDString const interface = isComponent ? Vst::IComponent::iid : Vst::IEditController::iid;
    if (factory->createInstance(info.cid, interface, &made) != kResultOk || !made)
        return false;
    auto* const object = static_cast<IPluginBase*>(made);
    object->initialize(&theHost);
    object->terminate();
    object->release();
    return true;
}

int MakeClasses(IPluginFactory* factory) {
    PFactoryInfo factoryInfo;
    factory->getFactoryInfo(&factoryInfo);
    int made = 0;
    for (int32 index = 0; index < factory->countClasses(); ++index) {
        PClassInfo info;
        if (factory->getClassInfo(index, &info) == kResultOk && MakeClass(factory, info))
            ++made;
    }
    return made;
}

int ScanModule(HINSTANCE__* module) {
    if (auto const entry = reinterpret_cast<bool (*)(void*)>(os::FindExport(module, "ModuleEntry")))
        entry(module);
    auto const getFactory = reinterpret_cast<IPluginFactory* (*)()>(os::FindExport(module, "GetPluginFactory"));
    int made = 0;
    if (IPluginFactory* const factory = getFactory ? getFactory() : nullptr) {
        made = MakeClasses(factory);
        factory->release();
    }
    if (auto const exit = reinterpret_cast<bool (*)()>(os::FindExport(module, "ModuleExit")))
        exit();
    return made;
}

} // namespace

int ScanBare(std::vector<std::string> const& modules) {
    return OpenEachModule(modules, ScanModule);
}

} // namespace vynbench
