#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynmediatypes/AudioBusDescription.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <string>
#include <vector>

namespace vynhost {

class PluginSelection;

/// The buses of a filter.
struct BusFacts {
    std::vector<vynmediatypes::AudioBusDescription> inputs;
    std::vector<vynmediatypes::AudioBusDescription> outputs;
};

/// What a plug-in answers when its main buses are asked for a layout.
struct LayoutAnswer {
    std::string layout; ///< its name
    BusFacts buses;
};

/// What is known of a plug-in. A plain record.
struct PluginFacts {
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor> descriptor; ///< never null
    BusFacts buses;                                                             ///< as it comes
    int latency = 0;                                                            ///< in samples, at kFactsSampleRate
    int tail = 0;                                                               ///< likewise; -1 is endless
    int parameters = 0;
    int presets = 0;    ///< that it brings along
    bool chunk = false; ///< whether its settings are a block of its own making
    std::vector<LayoutAnswer> answers;
};

/// The sample rate in hertz that plug-ins are asked at.
inline constexpr float kFactsSampleRate = 48000.0f;

/// Makes filters of the class and asks them. Throws CommandError when none can be made, and what the plug-in throws.
/// [main-thread]
PluginFacts GatherFacts(PluginSelection const& plugin);

} // namespace vynhost
