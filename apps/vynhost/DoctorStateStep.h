#pragma once

namespace vynhost {

class PluginSelection;
struct DoctorStep;

/// Changes a plug-in's parameters, saves its state, gives that to another instance, and looks whether that one has what
/// the first had. Throws what the plug-in throws.
/// [main-thread]
void ExamineState(PluginSelection const& plugin, DoctorStep& step);

} // namespace vynhost
