#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/BusConfigurationUtilities.h"

#include <boost/any.hpp>

namespace vynfuzz {

using namespace vynaudiofilterhost::utility;
using Buses = std::vector<vynmediatypes::AudioBusDescription>;

void FuzzBusConfiguration(std::uint8_t const* data, std::size_t size) {
    Buses inputs;
    Buses outputs;
    try {
        ConvertBusConfigurationFromJSON(vyncore::UTF8String(data, data + size), inputs, outputs);
    } catch (boost::bad_any_cast const&) {
        Require(inputs.empty() && outputs.empty(), "a failure changes nothing");
        return;
    }
    Buses inputsAgain;
    Buses outputsAgain;
    ConvertBusConfigurationFromJSON(ConvertBusConfigurationToJSON(inputs, outputs), inputsAgain, outputsAgain);
    Require(inputsAgain == inputs && outputsAgain == outputs, "what was read survives writing and reading");
}

} // namespace vynfuzz
