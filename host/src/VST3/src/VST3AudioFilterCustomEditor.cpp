#include "vynaudiofilterhost/VST3/src/HostRunLoop.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilterEditor.h"

namespace vynaudiofilterhost::vst3 {

bool VST3AudioFilter::HasCustomEditor() const {
    if (mEditor && mEditor->HasView())
        return true;
    PluginPointer<Steinberg::IPlugView> const view(CreateEditorView(mController));
    return static_cast<bool>(view);
}

boost::intrusive_ptr<AudioFilterEditor> VST3AudioFilter::CreateCustomEditor() {
    if (!mEditor)
        mEditor = new VST3AudioFilterEditor(mController, mRunLoop);
    return mEditor;
}

void VST3AudioFilter::DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor> editor) {
    if (editor && editor == mEditor)
        DropEditor();
}

// Whoever should have closed it has forgotten: a view that goes while it is attached takes its window's loop with it.
void VST3AudioFilter::DropEditor() {
    if (!mEditor)
        return;
    auto const dropped = std::move(mEditor);
    dropped->CloseEditor();
    dropped->ForgetPlugin();
}

void VST3AudioFilter::OnAdvanceFocus(int direction) {
    constexpr int kForward = 1;
    // A listener may let go of the editor, and may throw, for which plug-ins aren't made.
    if (boost::intrusive_ptr<VST3AudioFilterEditor> const editor = mEditor)
        Guarded([&] { editor->GetAdvanceFocusSignal()(direction == kForward); });
}

} // namespace vynaudiofilterhost::vst3
