#pragma once

#include "vynhost/EditedState.h"
#include "vynhost/EditorWindow.h"
#include "vynhost/EditPlayback.h"
#include "vynhost/EditReport.h"
#include "vynhost/PluginSelection.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <optional>

namespace os {
class InterruptDescriptor;
}

namespace vynaudiofilterhost {
class AudioFilter;
class AudioFilterEditor;
} // namespace vynaudiofilterhost

namespace vynhost {

class EditLoop;
class EditRescue;
class XErrors;
enum class EditEnd;
struct EditRequest;

/// One editing of a plug-in, from the opened display to the files that are written at its end. It goes before the
/// Session does. All failures are CommandErrors or, when they concern neither file nor plug-in, std::runtime_errors.
class EditSession {
public:
    /// Opens the display and makes the filter. The arguments must outlive the object.
    /// [main-thread]
    EditSession(EditRequest const& request, os::InterruptDescriptor const& interrupt, EditRescue& rescue,
                XErrors& errors);
    EditSession(EditSession const&) = delete;
    EditSession& operator=(EditSession const&) = delete;
    /// [main-thread]
    ~EditSession();

    /// Shows the editor until its end; to be called once. Doesn't return when the display goes away. The state is saved
    /// whatever fails once the editor was open.
    /// [main-thread]
    void Run();

private:
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> MakeFilter() const;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> MakeEditor() const;
    void Prepare();
    void SaveAfterFailure();
    EditEnd ShowEditor();
    EditEnd LetSettle(EditLoop& loop);
    void WritePicture();
    std::optional<std::uint64_t> FindDeadline() const;
    void Attend();
    void TellPlayback();
    void TellTroubles();
    void SaveState();

    EditRequest const& mRequest;
    os::InterruptDescriptor const& mInterrupt;
    EditRescue& mRescue;
    XErrors& mErrors;
    EditorWindow mWindow;
    PluginSelection mPlugin;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> mFilter;
    EditReport mReport;
    std::optional<EditedState> mSavedState;
    std::optional<EditPlayback> mPlayback;
    std::uint64_t mOpenedNanos = 0;
    bool mOpened = false;
    bool mBlankTold = false;
};

} // namespace vynhost
