#pragma once

#include "vynhost/EditorWindow.h"

#include <boost/signals2/connection.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>
#include <optional>

namespace vynaudiofilterhost {
class AudioFilter;
class AudioFilterEditor;
} // namespace vynaudiofilterhost

namespace vynhost {

/// A plug-in's editor in a window, and the window at the editor's size. Filter and window belong to the caller and must
/// outlive it.
///
/// Life: made with a closed editor; Open; Idle and Follow again and again; Close. They throw what the plug-in throws;
/// the destructor doesn't, and closes what is open.
class EditFrame {
public:
    /// @param editor  of the filter's making, not null; the filter has it back when the object goes
    /// [main-thread]
    EditFrame(EditorWindow& window, vynaudiofilterhost::AudioFilter& filter,
              boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> editor);
    EditFrame(EditFrame const&) = delete;
    EditFrame& operator=(EditFrame const&) = delete;
    /// [main-thread]
    ~EditFrame();

    /// Shows the window and opens the editor in it. A plug-in that tells no size a window can have gets a window of the
    /// size it had; it may tell one later. False: the plug-in has refused the window.
    /// [main-thread]
    bool Open();

    /// Brings the window to the size that the plug-in has now, if there is reason to ask. To be called after the
    /// window's HandleEvents.
    /// [main-thread]
    void Follow();

    /// [main-thread]
    void Idle();

    /// [main-thread]
    void Close();

private:
    void HearSizeChange();
    void TakeSize();

    EditorWindow& mWindow;
    vynaudiofilterhost::AudioFilter& mFilter;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> mEditor;
    boost::signals2::scoped_connection mSizeConnection;
    std::atomic<bool> mSizeChanged = false; ///< set on the thread that the plug-in chose
    std::optional<WindowSize> mContentSize; ///< that was looked at last
};

} // namespace vynhost
