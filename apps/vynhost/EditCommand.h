#pragma once

#include <optional>
#include <string>

namespace vynhost {

/// What the user asks of `vynhost edit`.
struct EditRequest {
    std::string modulePath;
    std::string classID = {};                      ///< empty when the module's only class is meant
    std::optional<std::string> statePath = {};     ///< of the state that the plug-in starts with
    std::optional<std::string> saveStatePath = {}; ///< of the state that it ends with
    std::optional<std::string> playPath = {};      ///< of what is played through the plug-in
    bool guarded = true;                           ///< silences blocks of it that must not be heard
    std::optional<std::string> screenshotPath = {};
    double afterSeconds = 1.0; ///< that the screenshot is taken; the command ends with it
    bool json = false;
};

/// Opens a plug-in's own window and tells what is edited in it, as it is edited, on standard output, until the window
/// is closed, the program is wanted to end, or the screenshot is taken. Returns nothing more to be printed. Throws
/// CommandError. When the display goes away the state is saved as asked, and the process ends here; so it does,
/// unsaved, when it is wanted to end a second time.
/// [main-thread]
std::string RunEdit(EditRequest const& request);

} // namespace vynhost
