#pragma once

#include "guard/OutputGuard.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// The facts of a finished rendering, for a person or for a program. Levels are linear, full scale being 1.
struct RenderReport {
    std::string id;   ///< of the plug-in's class
    std::string name; ///< of the plug-in
    std::string outputPath;
    std::string sampleFormat; ///< of the output file
    int sampleRate = 0;       ///< in hertz
    std::int64_t samples = 0; ///< of the output file, per channel
    int channelsIn = 0;
    int channelsOut = 0;
    std::optional<double> peakIn; ///< empty without an input
    std::optional<double> rmsIn;  ///< likewise
    double peakOut = 0.0;
    double rmsOut = 0.0;
    int latency = 0;       ///< in samples
    std::int64_t tail = 0; ///< in samples
    double timesRealTime = 0.0;
    std::optional<vynguard::OutputGuard::Report> guard; ///< empty without a guard
    std::vector<std::string> notes;
};

/// One JSON document, with a line break behind it.
/// [any-thread]
std::string FormatJSON(RenderReport const& report);

/// A table for a person, with levels in decibels too.
/// [any-thread]
std::string FormatTable(RenderReport const& report);

} // namespace vynhost
