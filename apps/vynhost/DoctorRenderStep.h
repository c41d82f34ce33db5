#pragma once

namespace vynhost {

class PluginSelection;
struct DoctorStep;

/// Sends half a second of sound through a plug-in, an instrument some notes too, in large blocks and in small ones, and
/// looks at what comes out. Returns how many times faster than real time that was in large blocks; 0 when nothing was
/// rendered. Throws what the plug-in throws.
/// [main-thread]
double ExamineRendering(PluginSelection const& plugin, DoctorStep& step);

} // namespace vynhost
