#pragma once

#include "vyncore/Export.h"
#include "vyncore/geom/Rect.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/signals2/signal.hpp>

namespace vynaudiofilterhost {

/// A plug-in's own user interface. A filter makes it in CreateCustomEditor and drops it in DestroyCustomEditor; it is
/// held through boost::intrusive_ptr. It makes no window of its own: the application gives the window to open in.
///
/// Life cycle: made closed; OpenEditor; CloseEditor; it may be opened again.
class VYN_API AudioFilterEditor : public vyncore::utility::RefCountedObject {
public:
    using ContentSizeChangedSignal = boost::signals2::signal<void()>;
    using AdvanceFocusSignal = boost::signals2::signal<void(bool)>;

    /// [main-thread]
    AudioFilterEditor();
    AudioFilterEditor(AudioFilterEditor const&) = delete;
    AudioFilterEditor& operator=(AudioFilterEditor const&) = delete;
    ~AudioFilterEditor() override;

    /// Where the interface lies in its parent window, in pixels; empty when the plug-in doesn't say.
    /// [main-thread]
    virtual vyncore::geom::RectT<int> GetEditorBounds() = 0;

    /// Shows the interface inside the given window, whose native handle the pointer is.
    /// [main-thread]
    virtual void OpenEditor(void* parentWindow) = 0;

    /// Takes the interface out of its window, which may go then.
    /// [main-thread]
    virtual void CloseEditor() = 0;

    /// Gives the interface time for its idle work.
    /// [main-thread]
    virtual void EditorIdle() = 0;

    /// Whether there is an interface to open at all.
    /// [main-thread]
    virtual bool IsEditorAvailable() = 0;

    /// Tells the brightness of the application's own interface. Does nothing unless overridden.
    /// [main-thread]
    virtual void SetBrightness(float brightness, bool refresh);

    /// Moves the keyboard focus in, to the first or, going backwards, the last control. False: it was not taken.
    /// [main-thread]
    virtual bool GainFocus(bool forward);

    /// Gives the focus back to the control that had it last. False: it was not taken.
    /// [main-thread]
    virtual bool SetCurrentFocus();

    /// Whether the interface is shown: an interface that refuses its window stays closed.
    /// [main-thread]
    bool IsOpen() const noexcept { return mOpen; }

    /// Fires when GetEditorBounds has changed; some plug-ins say so on threads of their own.
    /// [any-thread]
    ContentSizeChangedSignal& GetContentSizeChangedSignal() noexcept { return mContentSizeChanged; }

    /// Fires when the focus leaves the interface; true means forward.
    /// [any-thread]
    AdvanceFocusSignal& GetAdvanceFocusSignal() noexcept { return mAdvanceFocus; }

protected:
    void SetOpen(bool open) noexcept { mOpen = open; }

private:
    bool mOpen = false;
    ContentSizeChangedSignal mContentSizeChanged;
    AdvanceFocusSignal mAdvanceFocus;
};

} // namespace vynaudiofilterhost
