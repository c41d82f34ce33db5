#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// What is known of one parameter. A plain record. What a plug-in gives for a number may be none.
struct ParameterFacts {
    int index = 0;
    std::optional<std::uint32_t> id = {}; ///< the plug-in's own
    std::string name;
    std::string label; ///< behind a value
    float low = 0.0f;  ///< display value of normalized 0
    float high = 1.0f; ///< likewise of 1
    int steps = 0;
    float value = 0.0f;   ///< present, normalized
    float display = 0.0f; ///< present
    std::string text;     ///< of the present value
    bool exposed = true;
    bool automatable = true;
};

/// Asks a filter for one of its parameters. Throws what the plug-in throws.
/// @param index  of a parameter that it has
/// [main-thread & suspended]
ParameterFacts GatherParameter(vynaudiofilterhost::AudioFilter& filter, int index);

/// Asks a filter for all its parameters, in their order. Throws what the plug-in throws.
/// [main-thread & suspended]
std::vector<ParameterFacts> GatherParameters(vynaudiofilterhost::AudioFilter& filter);

} // namespace vynhost
