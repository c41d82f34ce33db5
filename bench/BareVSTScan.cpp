#include "BareVSTScan.h"

#include "OpenEachModule.h"
#include "vynaudiofilterhost/VST/src/AEffect.h"

namespace vynbench {

using namespace vynaudiofilterhost::vst;

namespace {

std::intptr_t AnswerVersion(AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void*, float) {
    return opcode == audioMasterVersion ? 2400 : 0;
}

int ScanModule(HINSTANCE__* module) {
    void* found = os::FindExport(module, "VSTPluginMain");
    if (!found)
        found = os::FindExport(module, "main");
    AEffect* const effect = found ? reinterpret_cast<EntryFunction>(found)(AnswerVersion) : nullptr;
    if (!effect || effect->magic != kEffectMagic)
        return 0;
    char text[1024] = {};
    effect->dispatcher(effect, effOpen, 0, 0, nullptr, 0.0f);
    effect->dispatcher(effect, effGetEffectName, 0, 0, text, 0.0f);
    effect->dispatcher(effect, effGetVendorString, 0, 0, text, 0.0f);
    effect->dispatcher(effect, effGetVstVersion, 0, 0, nullptr, 0.0f);
    effect->dispatcher(effect, effGetPlugCategory, 0, 0, nullptr, 0.0f);
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    return 1;
}

} // namespace

int ScanBareVST(std::vector<std::string> const& modules) {
    return OpenEachModule(modules, ScanModule);
}

} // namespace vynbench
