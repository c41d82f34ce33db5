#include "vynaudiofilterhost/Library.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterRegistrar.h"
#include "vynaudiofilterhost/inventory/BuildPrivatePluginConfigCmd.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynscripting/threads/UIThreadCalls.h"

#include <cassert>

namespace vynaudiofilterhost {

namespace {

unsigned theInitializeCount = 0;

} // namespace

bool Initialize(bool synthsEnabled) {
    if (theInitializeCount != 0) {
        assert(CurrentThreadIDIsMainThreadID());
        ++theInitializeCount;
        return true;
    }
    SetMainThreadToCurrentThread();
    vynscripting::threads::SetUIThreadToCurrentThread();
    AudioFilterDescriptorManager::GetInstance().SetSynthsEnabled(synthsEnabled);
    AudioFilterRegistrar::RegisterDeferredDescriptors();
    console::BuildPrivatePluginConfigCmd::Register();
    vst3::CreateVST3ModuleCache();
    vst::CreateVSTModuleCache();
    theInitializeCount = 1;
    return true;
}

void Terminate() {
    if (theInitializeCount == 0)
        return;
    assert(CurrentThreadIDIsMainThreadID());
    if (--theInitializeCount != 0)
        return;
    vst3::DestroyVST3ModuleCache();
    vst::DestroyVSTModuleCache();
    console::BuildPrivatePluginConfigCmd::Unregister();
}

} // namespace vynaudiofilterhost
