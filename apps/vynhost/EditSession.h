#pragma once

#include "vynhost/EditedState.h"
#include "vynhost/EditorWindow.h"
#include "vynhost/EditPlayback.h"
#include "vynhost/EditReport.h"
#include "vynhost/EditRescue.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/XErrors.h"

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

enum class EditEnd;
struct EditRequest;

/// One editing of a plug-in, from the opened display to the files that are written at its end. It goes before the
/// Session does. All failures are CommandErrors or, when they concern neither file nor plug-in, std::runtime_errors.
class EditSession {
public:
    /// Opens the display and makes the filter. Both arguments must outlive the object.
    /// [main-thread]
    EditSession(EditRequest const& request, os::InterruptDescriptor const& interrupt);
    EditSession(EditSession const&) = delete;
    EditSession& operator=(EditSession const&) = delete;
    /// [main-thread]
    ~EditSession();

    /// Shows the editor until its end; to be called once. Doesn't return when the display goes away.
    /// [main-thread]
    void Run();

private:
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> MakeFilter() const;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> MakeEditor() const;
    void Prepare();
    EditEnd ShowEditor();
    std::optional<std::uint64_t> FindDeadline() const;
    void Attend();
    void TellTroubles();
    void TakeScreenshot();
    void SaveState();

    EditRequest const& mRequest;
    os::InterruptDescriptor const& mInterrupt;
    EditRescue mRescue;
    XErrors mErrors;
    EditorWindow mWindow;
    PluginSelection mPlugin;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> mFilter;
    EditReport mReport;
    std::optional<EditedState> mSavedState;
    std::optional<EditPlayback> mPlayback;
    std::uint64_t mOpenedNanos = 0;
    bool mBlankTold = false;
};

} // namespace vynhost
