#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/UString.h"

#include <functional>

/// Debug monitors: parts of a program that can say in a few lines how they are doing. Each registers a callback under
/// a name of its own; an application shows what all of them write. Monitors have no effect on behaviour.
namespace vyncore::debug {

/// Writes the present state of the part that registered it. Must not render the monitors itself.
/// [main-thread]
using DebugMonitorCallback = std::function<void(UTF16StringStream&)>;

/// Registers a monitor; one of the same name is replaced. An empty callback or a null name does nothing.
/// [any-thread]
VYN_API void RegisterDebugMonitorCallback(char const* name, DebugMonitorCallback callback);

/// Takes a monitor out. When this returns its callback isn't running on another thread and is never called again.
/// [any-thread]
VYN_API void UnregisterDebugMonitorCallback(char const* name);

/// What all monitors have to say, in the order of their names: for each a line with the name, then its text, then a
/// line end. A callback that throws is named as failed.
/// [main-thread]
VYN_API UString RenderDebugMonitors();

} // namespace vyncore::debug
