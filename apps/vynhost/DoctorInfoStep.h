#pragma once

namespace vynhost {

class PluginSelection;
struct DoctorStep;

/// Asks a plug-in for everything that it tells of itself, and looks whether that makes sense. Throws what the plug-in
/// throws.
/// [main-thread]
void ExamineInfo(PluginSelection const& plugin, DoctorStep& step);

} // namespace vynhost
