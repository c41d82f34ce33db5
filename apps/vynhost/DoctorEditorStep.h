#pragma once

#include <functional>

namespace vynhost {

class PluginSelection;
class XErrors;
struct DoctorStep;

/// Opens a plug-in's editor, waits for its first picture, and looks at what further openings leave behind. Skipped when
/// there is no display. Throws what the plug-in throws.
/// @param errors      hears of what goes wrong on the display
/// @param stillAlive  called whenever the editor has come back from its work; large ones take their time
/// [main-thread]
void ExamineEditor(PluginSelection const& plugin, XErrors& errors, DoctorStep& step,
                   std::function<void()> const& stillAlive);

} // namespace vynhost
