#include "plugins/VSTFixtureEffect.h"

namespace vynfixtures {

using namespace vynaudiofilterhost::vst;

std::intptr_t VSTFixtureEffect::AnswerOfEditor(std::int32_t opcode, void* ptr) {
    switch (opcode) {
    case effEditGetRect:
        return GetEditorRect(static_cast<ERect**>(ptr));
    case effEditOpen:
        mEditorOpen = true;
        return mConfiguration.editor.openAnswer;
    case effEditClose:
        mEditorOpen = false;
        return 1;
    case effVendorSpecific:
        return mConfiguration.editor.vendorAnswer;
    default:
        return 0;
    }
}

std::intptr_t VSTFixtureEffect::GetEditorRect(ERect** rect) {
    if (mConfiguration.editor.hasRect && (mEditorOpen || !mConfiguration.editor.rectWhenOpen)) {
        mEditorRect = mConfiguration.editor.rect;
        *rect = &mEditorRect;
    }
    return 1;
}

} // namespace vynfixtures
