#include "vynaudiofilterhost/VST/src/EffectText.h"

#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"

namespace vynaudiofilterhost::vst {

namespace {

vyncore::UString ReadText(AEffect* effect, EffectOpcode opcode) {
    EffectNameText text;
    DispatchTo(effect, opcode, 0, 0, text.GetBuffer(), 0.0f);
    return text.GetAsUTF8();
}

} // namespace

vyncore::UString ReadEffectName(AEffect* effect) {
    return ReadText(effect, effGetEffectName);
}

vyncore::UString ReadVendorString(AEffect* effect) {
    return ReadText(effect, effGetVendorString);
}

} // namespace vynaudiofilterhost::vst
