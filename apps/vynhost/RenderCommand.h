#pragma once

#include "vynhost/ChannelChoice.h"
#include "vynhost/FilterStep.h"
#include "vynhost/ParameterSetting.h"
#include "vynhost/TrackBasis.h"

#include "vynmediatypes/AudioChannelLayout.h"

#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost render`.
struct RenderRequest {
    std::string modulePath;
    std::optional<std::string> inputPath; ///< without it there is a MIDI file
    std::string outputPath;
    std::string classID = {}; ///< empty when the module's only class is meant
    int blockSize = 512;
    std::optional<std::string> midiPath = {}; ///< of the song that an instrument plays
    int sampleRate = 44100;                   ///< in hertz, of a rendering without an input file
    std::optional<double> tailSeconds = {};   ///< rendered behind the end; empty: what the plug-in says
    std::optional<std::string> sideChainPath = {};
    vynmediatypes::AudioChannelLayout layout = {}; ///< of the track; empty when file and plug-in decide
    ChannelChoice channels = {};
    std::optional<std::string> statePath = {};   ///< of the state that the plug-in starts with
    std::optional<std::string> preset = {};      ///< name or index; comes after the state
    std::vector<ParameterSetting> settings = {}; ///< come after the preset, in this order
    std::optional<std::string> automationPath = {};
    std::optional<std::string> saveStatePath = {}; ///< of the state with preset and settings
    bool guarded = true; ///< silences blocks that must not be heard, and restores the floating-point mode
    bool json = false;
    TrackBasis basis = TrackBasis::kFile; ///< of a filter that was set up before
    FilterStep settle = {}; ///< done to the filter before anything else, with a block of silence behind it
};

/// Sends an audio file through a plug-in into a WAV file, or has an instrument play a MIDI file into it, or both, and
/// returns the report to be printed. Throws CommandError; then the output file is as it was before, and so is the file
/// of the saved state unless the output alone could not be put in its place.
/// [main-thread]
std::string RunRender(RenderRequest const& request);

} // namespace vynhost
