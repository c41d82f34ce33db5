#pragma once

namespace vynhost {

struct RenderRequest;

/// Throws CommandError (wrong usage), with the file, when a rendering would overwrite a file that it reads, or one that
/// it writes, or put anything into the plug-in: its module file, or any place in the folder of its bundle.
/// [main-thread]
void CheckOutputPaths(RenderRequest const& request);

} // namespace vynhost
