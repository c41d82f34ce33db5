#include "vynaudiofilterhost/VST/src/VSTAudioFilterEditor.h"

#include "vynaudiofilterhost/VST/src/CanDoQuestion.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"

#include <algorithm>
#include <limits>

namespace vynaudiofilterhost::vst {

namespace {

// The indices of effVendorSpecific and audioMasterVendorSpecific with which effects and this host speak of editors.
constexpr auto kSetBrightness = static_cast<std::int32_t>(0x80000009);
constexpr auto kGainFocusForward = static_cast<std::int32_t>(0x8000000A);
constexpr auto kGainFocusBackward = static_cast<std::int32_t>(0x8000000B);
constexpr auto kSetCurrentFocus = static_cast<std::int32_t>(0x8000000C);
constexpr std::int32_t kAdvanceFocusForward = 0x70400003;
constexpr std::int32_t kAdvanceFocusBackward = 0x70400004;

} // namespace

VSTAudioFilterEditor::VSTAudioFilterEditor(AEffect* effect, VSTAudioFilter* filter)
    : VSTDispatcherBase(effect), mFilter(filter) {}

VSTAudioFilterEditor::~VSTAudioFilterEditor() {
    if (IsOpen())
        Disconnect();
}

std::intptr_t VSTAudioFilterEditor::Tell(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                         float opt) const {
    return mFilter ? Dispatch(opcode, index, value, ptr, opt) : 0;
}

vyncore::geom::RectT<int> VSTAudioFilterEditor::GetEditorBounds() {
    int const width = mWidth.load(std::memory_order_relaxed);
    int const height = mHeight.load(std::memory_order_relaxed);
    if (width > 0 && height > 0)
        return {0, 0, width, height};
    ERect* rect = nullptr;
    Tell(effEditGetRect, 0, 0, &rect, 0.0f);
    if (!rect || !mFilter)
        return {};
    return {rect->left, rect->top, rect->right, rect->bottom};
}

void VSTAudioFilterEditor::OpenEditor(void* parentWindow) {
    if (IsOpen() || !mFilter)
        return;
    // The effect may ask for a size as it opens, and a listener let go of the editor over it: open from here on, so
    // that it is closed then.
    boost::intrusive_ptr<VSTAudioFilterEditor> const self(this);
    SetOpen(true);
    mFilter->EditorAttached();
    mFilter->AddEditorCallback(this, [this](std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                            float opt) { return EditorCallback(opcode, index, value, ptr, opt); });
    Dispatch(effEditOpen, 0, 0, parentWindow, 0.0f);
}

void VSTAudioFilterEditor::CloseEditor() {
    if (!IsOpen())
        return;
    Tell(effEditClose, 0, 0, nullptr, 0.0f);
    Disconnect();
}

void VSTAudioFilterEditor::Disconnect() {
    if (mFilter) {
        mFilter->RemoveEditorCallback(this);
        mFilter->EditorDetached();
    }
    SetOpen(false);
}

void VSTAudioFilterEditor::EditorIdle() {
    Tell(effEditIdle, 0, 0, nullptr, 0.0f);
}

bool VSTAudioFilterEditor::IsEditorAvailable() {
    return true;
}

void VSTAudioFilterEditor::SetBrightness(float brightness, bool refresh) {
    Tell(effVendorSpecific, kSetBrightness, refresh ? 1 : 0, nullptr, brightness);
}

bool VSTAudioFilterEditor::GainFocus(bool forward) {
    return Tell(effVendorSpecific, forward ? kGainFocusForward : kGainFocusBackward, 0, nullptr, 0.0f) != 0;
}

bool VSTAudioFilterEditor::SetCurrentFocus() {
    return Tell(effVendorSpecific, kSetCurrentFocus, 0, nullptr, 0.0f) != 0;
}

std::intptr_t VSTAudioFilterEditor::EditorCallback(std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                                   void* ptr, float) {
    switch (opcode) {
    case audioMasterSizeWindow:
        mWidth.store(index, std::memory_order_relaxed);
        mHeight.store(static_cast<std::int32_t>(std::clamp<std::intptr_t>(value, 0, std::numeric_limits<int>::max())),
                      std::memory_order_relaxed);
        GetContentSizeChangedSignal()();
        return 1;
    case audioMasterVendorSpecific:
        AdvanceFocus(index);
        return 1;
    case audioMasterCanDo:
        return ptr && IsQuestion(static_cast<char const*>(ptr), "sizeWindow") ? 1 : 0;
    case audioMasterBeginEdit:
        // Effects report what nobody can edit as well; the filter keeps something for each index.
        if (index < mFilter->GetParameterCount())
            mFilter->BeginEditing(index);
        return 1;
    case audioMasterEndEdit:
        if (index < mFilter->GetParameterCount())
            mFilter->EndEditing(index);
        return 1;
    default:
        return 0;
    }
}

void VSTAudioFilterEditor::AdvanceFocus(std::int32_t index) {
    if (index == kAdvanceFocusForward || index == kAdvanceFocusBackward)
        GetAdvanceFocusSignal()(index == kAdvanceFocusForward);
}

} // namespace vynaudiofilterhost::vst
