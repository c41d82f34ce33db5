#pragma once

#include "vynhost/AutomationPlayer.h"
#include "vynhost/FilterStep.h"

#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

class AutomationFile;
struct RenderRequest;

/// What a user asks of a filter's parameters for a rendering, with everything that was named found. It belongs to the
/// one filter that it was made for, and must go before that does.
struct FilterPlan {
    std::vector<FilterStep> preparations; ///< in their order, on the running filter, each followed by a block
    AutomationPlayer automation;
    std::vector<std::string> notes; ///< for the user
};

/// Gives the filter the state that is asked for, and finds the presets, parameters and values. Throws CommandError for
/// what can't be found, std::runtime_error for a preset that can't be selected, and what the plug-in throws.
/// @param filter      set up for the rendering's rate and block size: the values that it takes may depend on them
/// @param sampleRate  of the rendering, in hertz
/// [main-thread & suspended]
FilterPlan MakeFilterPlan(vynaudiofilterhost::AudioFilter& filter, RenderRequest const& request,
                          AutomationFile const& automation, double sampleRate);

} // namespace vynhost
