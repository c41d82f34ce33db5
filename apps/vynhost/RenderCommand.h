#pragma once

#include "vynhost/ChannelChoice.h"

#include "vynmediatypes/AudioChannelLayout.h"

#include <optional>
#include <string>

namespace vynhost {

/// What the user asks of `vynhost render`.
struct RenderRequest {
    std::string modulePath;
    std::string inputPath;
    std::string outputPath;
    std::string classID = {}; ///< empty when the module's only class is meant
    int blockSize = 512;
    std::optional<std::string> sideChainPath = {};
    vynmediatypes::AudioChannelLayout layout = {}; ///< of the track; empty when file and plug-in decide
    ChannelChoice channels = {};
    bool json = false;
};

/// Sends an audio file through a plug-in into a WAV file, and returns the report to be printed. Throws CommandError;
/// then the output file is as it was before.
/// [main-thread]
std::string RunRender(RenderRequest const& request);

} // namespace vynhost
