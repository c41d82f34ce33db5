#pragma once

#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"

#include <atomic>
#include <cstdint>

namespace vynaudiofilterhost::vst {

class VSTAudioFilter;

/// The editor that an effect draws itself. While it is open the effect's calls reach it before the filter: what the
/// user edits, and the size that the effect asks for. They come on any thread.
///
/// Made by the filter, which outlives it as a rule; one that has lost its filter does nothing any more.
class VSTAudioFilterEditor final : public AudioFilterEditor, private VSTDispatcherBase {
public:
    /// [main-thread]
    VSTAudioFilterEditor(AEffect* effect, VSTAudioFilter* filter);
    /// An editor must be closed before; of one that isn't, the effect is told nothing.
    /// [main-thread]
    ~VSTAudioFilterEditor() override;

    // AudioFilterEditor. [main-thread]

    /// What the effect asked for last, at 0, 0; before it asks for anything its own rectangle, empty when it has none.
    vyncore::geom::RectT<int> GetEditorBounds() override;
    void OpenEditor(void* parentWindow) override;
    void CloseEditor() override;
    void EditorIdle() override;
    bool IsEditorAvailable() override;
    void SetBrightness(float brightness, bool refresh) override;
    bool GainFocus(bool forward) override;
    bool SetCurrentFocus() override;

    /// The filter, and with it the effect, is about to go.
    /// [main-thread]
    void ForgetFilter() noexcept { mFilter = nullptr; }

private:
    std::intptr_t EditorCallback(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);
    void AdvanceFocus(std::int32_t index);
    void Disconnect();
    std::intptr_t Tell(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) const;

    VSTAudioFilter* mFilter; ///< null when it has gone
    std::atomic<std::int32_t> mWidth{0};
    std::atomic<std::int32_t> mHeight{0};
};

} // namespace vynaudiofilterhost::vst
