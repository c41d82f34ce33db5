#include "vynaudiofilterhost/BusConfigurationUtilities.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/serialization/JSON.h"
#include "vyncore/strings/StringUtils.h"

#include <boost/any.hpp>

#include <cstdint>
#include <utility>

namespace vynaudiofilterhost::utility {

using vyncore::UTF8String;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelDescription;
using vynmediatypes::AudioChannelLayout;
using Buses = std::vector<AudioBusDescription>;
namespace json = vyncore::serialization;

namespace {

boost::any ToJSON(AudioBusDescription const& bus) {
    boost::any layout = json::JSONArray();
    for (AudioChannelDescription const channel : bus.GetLayout())
        json::AppendToArray(layout, static_cast<std::int64_t>(channel.GetLabel()));
    boost::any object;
    json::AddToObject(object, "type", static_cast<std::int64_t>(bus.GetType()));
    json::AddToObject(object, "name", vyncore::string::UTF16to8(bus.GetName()));
    json::AddToObject(object, "layout", layout);
    return object;
}

boost::any ToJSON(Buses const& buses) {
    boost::any array = json::JSONArray();
    for (AudioBusDescription const& bus : buses)
        json::AppendToArray(array, ToJSON(bus));
    return array;
}

// Of a number in either of the parser's forms the lower 32 bits.
std::int32_t ToInt32(boost::any const& number) {
    if (auto const* const negative = boost::any_cast<std::int64_t>(&number))
        return static_cast<std::int32_t>(*negative);
    return static_cast<std::int32_t>(boost::any_cast<std::uint64_t>(number));
}

// The elements of a member that is an array; none when it is missing.
json::JSONArray const& ElementsOf(boost::any const& object, UTF8String const& key) {
    static json::JSONArray const& kNone = *new json::JSONArray;
    boost::any const* const member = json::GetVariantInObject(object, key);
    return member ? boost::any_cast<json::JSONArray const&>(*member) : kNone;
}

AudioBusDescription ToBus(boost::any const& element) {
    static_cast<void>(boost::any_cast<json::JSONObject const&>(element));
    boost::any const* const type = json::GetVariantInObject(element, "type");
    boost::any const* const name = json::GetVariantInObject(element, "name");
    AudioChannelLayout layout;
    for (boost::any const& label : ElementsOf(element, "layout"))
        layout.emplace_back(ToInt32(label));
    return {name ? vyncore::string::UTF8to16(boost::any_cast<UTF8String const&>(*name)) : vyncore::UString(),
            std::move(layout), static_cast<AudioBusDescription::Type>(type ? ToInt32(*type) : 0)};
}

Buses ToBuses(boost::any const& configuration, UTF8String const& key) {
    Buses buses;
    for (boost::any const& element : ElementsOf(configuration, key))
        buses.push_back(ToBus(element));
    return buses;
}

} // namespace

UTF8String ConvertBusConfigurationToJSON(Buses const& inputs, Buses const& outputs) {
    boost::any configuration;
    json::AddToObject(configuration, "in", ToJSON(inputs));
    json::AddToObject(configuration, "out", ToJSON(outputs));
    return json::GetJSONUTF8String(configuration);
}

void ConvertBusConfigurationFromJSON(UTF8String const& text, Buses& inputs, Buses& outputs) {
    boost::any const configuration = json::JSONParse(text);
    Buses in = ToBuses(configuration, "in");
    Buses out = ToBuses(configuration, "out");
    inputs = std::move(in);
    outputs = std::move(out);
}

UTF8String GetAudioFilterBusConfig(boost::intrusive_ptr<AudioFilter> const& filter) {
    Buses inputs;
    Buses outputs;
    if (filter)
        filter->GetBusConfiguration(inputs, outputs);
    return ConvertBusConfigurationToJSON(inputs, outputs);
}

void SetAudioFilterBusConfig(UTF8String const& text, boost::intrusive_ptr<AudioFilter> const& filter) {
    Buses inputs;
    Buses outputs;
    ConvertBusConfigurationFromJSON(text, inputs, outputs);
    if (filter)
        filter->RequestBusConfiguration(inputs, outputs);
}

} // namespace vynaudiofilterhost::utility
