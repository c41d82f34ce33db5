#include "vynhost/EditCommand.h"

#include "vynhost/CommandError.h"
#include "vynhost/EditRescue.h"
#include "vynhost/EditSession.h"
#include "vynhost/InsistentInterrupt.h"
#include "vynhost/OutputPaths.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/Session.h"
#include "vynhost/XErrors.h"

#include "os/InterruptDescriptor.h"
#include "os/ReplacementFile.h"

#include <stdexcept>

namespace vynhost {

namespace {

void CheckPaths(EditRequest const& request) {
    RenderRequest paths{.modulePath = request.modulePath,
                        .inputPath = request.playPath,
                        .outputPath = request.screenshotPath.value_or("")};
    paths.statePath = request.statePath;
    paths.saveStatePath = request.saveStatePath;
    CheckOutputPaths(paths);
}

// Better told before the work than behind it.
void CheckWritable(std::optional<std::string> const& path) {
    try {
        if (path)
            os::ReplacementFile const trial(*path);
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(*path, error.what());
    }
}

} // namespace

std::string RunEdit(EditRequest const& request) {
    CheckPaths(request);
    os::InterruptDescriptor const interrupt;
    InsistentInterrupt const insistence;
    CheckWritable(request.screenshotPath);
    CheckWritable(request.saveStatePath);
    // Modules are unloaded with the library, and only then some of them close their connections.
    EditRescue rescue(request.json);
    XErrors errors([&] { rescue.Leave(); });
    Session const session;
    EditSession(request, interrupt, rescue, errors).Run();
    return {};
}

} // namespace vynhost
