#pragma once

#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/VST3/src/HostRunLoop.h"
#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <memory>

namespace vynaudiofilterhost::vst3 {

/// The editor over the view that a plug-in's edit controller makes. It is the view's frame: the view tells it the size
/// that it wants.
///
/// Made by the filter, which drops it before the controller goes; who holds it longer holds one that does nothing any
/// more. It keeps no reference on the filter. Without a view it is there and does nothing.
class VST3AudioFilterEditor final : public AudioFilterEditor, public Steinberg::IPlugFrame {
public:
    /// @param runLoop  what the frame answers for beside itself; the filter's
    /// [main-thread]
    VST3AudioFilterEditor(Steinberg::Vst::IEditController* controller, std::shared_ptr<HostRunLoop> runLoop);
    ~VST3AudioFilterEditor() override;

    /// Gives back what it has of the plug-in, which is about to go. From here on it does nothing.
    /// [main-thread]
    void ForgetPlugin() noexcept;

    /// [main-thread]
    bool HasView() const noexcept { return mView != nullptr; }

    // AudioFilterEditor. [main-thread]
    vyncore::geom::RectT<int> GetEditorBounds() override;
    void OpenEditor(void* parentWindow) override;
    void CloseEditor() override;
    void EditorIdle() override;
    bool IsEditorAvailable() override;
    void SetBrightness(float brightness, bool refresh) override;
    bool GainFocus(bool forward) override;
    bool SetCurrentFocus() override;

    // IPlugFrame. resizeView [main-thread], the others [any-thread]
    Steinberg::tresult PLUGIN_API queryInterface(Steinberg::TUID const id, void** object) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }
    Steinberg::tresult PLUGIN_API resizeView(Steinberg::IPlugView* view, Steinberg::ViewRect* rect) override;

private:
    std::shared_ptr<HostRunLoop> const mRunLoop;
    IVST3TolveVendorSpecificController* mVendorController = nullptr; ///< holds one reference
    Steinberg::IPlugView* mView = nullptr;                           ///< holds one reference
    Steinberg::ViewRect mRequestedSize;                              ///< of the last resizeView
    int mResizing = 0;                                               ///< resizeViews that are under way
};

/// The view of a controller's editor, with a reference; null when it has none, or throws.
/// [main-thread]
Steinberg::IPlugView* CreateEditorView(Steinberg::Vst::IEditController* controller) noexcept;

} // namespace vynaudiofilterhost::vst3
