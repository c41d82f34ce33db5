#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilterEditor.h"
#include "vyncore/debug/DebugDatabase.h"

namespace vynaudiofilterhost::vst {

bool VSTAudioFilter::HasEditorFlag() const noexcept {
    return GetEffect() && (GetEffect()->flags & effFlagsHasEditor) != 0;
}

bool VSTAudioFilter::HasCustomEditor() const {
    return HasEditorFlag() &&
           vyncore::debug::DebugDatabase::Instance().GetEntry("DisableVSTCustomUI", "false") != "true";
}

boost::intrusive_ptr<AudioFilterEditor> VSTAudioFilter::CreateCustomEditor() {
    if (!mEditor && HasEditorFlag())
        mEditor = new VSTAudioFilterEditor(GetEffect(), this);
    return mEditor;
}

void VSTAudioFilter::DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor> editor) {
    if (editor && editor == mEditor)
        DropEditor();
}

// Whoever should have closed it has forgotten: effects don't survive the loss of the window that they draw in.
void VSTAudioFilter::DropEditor() {
    if (!mEditor)
        return;
    auto const dropped = std::move(mEditor);
    dropped->CloseEditor();
    dropped->ForgetFilter();
}

void VSTAudioFilter::AddEditorCallback(VSTAudioFilterEditor* editor, EffectCallback callback) {
    mEditorCallbacks.Add(editor, std::move(callback));
}

void VSTAudioFilter::RemoveEditorCallback(VSTAudioFilterEditor* editor) {
    mEditorCallbacks.Remove(editor);
}

} // namespace vynaudiofilterhost::vst
