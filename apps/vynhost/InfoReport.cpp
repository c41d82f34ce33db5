#include "vynhost/InfoReport.h"

#include "vynhost/DescriptorRow.h"
#include "vynhost/JSONText.h"
#include "vynhost/TechnologyName.h"
#include "vynhost/TextTable.h"

#include "vyncore/strings/StringUtils.h"

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptor;
using vyncore::string::UTF16to8;
using vynmediatypes::AudioBusDescription;
using Buses = std::vector<AudioBusDescription>;

namespace {

char const* TypeName(AudioBusDescription const& bus) {
    return bus.GetType() == AudioBusDescription::kTypeMain ? "main" : "sidechain";
}

nlohmann::ordered_json ToDocument(Buses const& buses) {
    auto list = nlohmann::ordered_json::array();
    for (AudioBusDescription const& bus : buses) {
        auto layout = nlohmann::ordered_json::array();
        for (auto const channel : bus.GetLayout())
            layout.push_back(channel.GetLabel());
        list.push_back({{"name", UTF16to8(bus.GetName())}, {"type", TypeName(bus)}, {"layout", layout}});
    }
    return list;
}

// "L R, with side chain L R"
std::string ChannelsText(Buses const& buses) {
    std::string text;
    for (AudioBusDescription const& bus : buses) {
        bool const main = bus.GetType() == AudioBusDescription::kTypeMain;
        text += text.empty() ? "" : ", ";
        text += main ? "" : "side chain ";
        text += UTF16to8(vynmediatypes::AudioChannelLayoutDescription(bus.GetLayout()));
    }
    return text.empty() ? "none" : text;
}

std::string BusText(AudioBusDescription const& bus) {
    std::string channels;
    for (auto const channel : bus.GetLayout())
        channels +=
            (channels.empty() ? "" : " ") + UTF16to8(vynmediatypes::AudioChannelDescriptionName(channel.GetLabel()));
    std::string const layout = UTF16to8(vynmediatypes::AudioChannelLayoutDescription(bus.GetLayout()));
    return '"' + UTF16to8(bus.GetName()) + "\", " + (TypeName(bus) == std::string("main") ? "main" : "side chain") +
           ", " + (layout == channels ? layout : layout + " (" + channels + ")");
}

void WriteBuses(TextTable& table, char const* name, Buses const& buses) {
    for (AudioBusDescription const& bus : buses)
        table.Row(name) << BusText(bus);
}

} // namespace

std::string FormatJSON(PluginFacts const& facts) {
    nlohmann::ordered_json document = ToRow(*facts.descriptor);
    document["inputs"] = ToDocument(facts.buses.inputs);
    document["outputs"] = ToDocument(facts.buses.outputs);
    document["latency"] = facts.latency;
    document["tail"] = facts.tail;
    document["parameters"] = facts.parameters;
    document["presets"] = facts.presets;
    document["editor"] = nullptr;
    document["chunk"] = facts.chunk;
    for (LayoutAnswer const& answer : facts.answers)
        document["answers"][answer.layout] = {{"inputs", ToDocument(answer.buses.inputs)},
                                              {"outputs", ToDocument(answer.buses.outputs)}};
    return ToText(document);
}

std::string FormatTable(PluginFacts const& facts) {
    AudioFilterDescriptor const& descriptor = *facts.descriptor;
    TextTable table(UTF16to8(descriptor.GetName()) + "  " + UTF16to8(descriptor.GetUniqueID()));
    table.Text("vendor", UTF16to8(descriptor.GetVendorString()));
    table.Row("version") << descriptor.GetVersion();
    table.Text("category", UTF16to8(descriptor.GetCategoryName()));
    table.Row("technology") << TechnologyName(descriptor.GetLocator().GetTechnologyType());
    table.Row("path") << UTF16to8(descriptor.GetLocator().GetPath());
    table.Row("instrument") << (descriptor.IsSynth() ? "yes" : "no");
    WriteBuses(table, "input", facts.buses.inputs);
    WriteBuses(table, "output", facts.buses.outputs);
    table.Row("latency") << facts.latency << " samples at " << static_cast<int>(kFactsSampleRate) << " Hz";
    if (facts.tail == -1)
        table.Row("tail") << "endless";
    else
        table.Row("tail") << facts.tail << " samples";
    table.Row("parameters") << facts.parameters;
    table.Row("presets") << facts.presets;
    for (LayoutAnswer const& answer : facts.answers)
        table.Row("asked " + answer.layout)
            << ChannelsText(answer.buses.inputs) << " in; " << ChannelsText(answer.buses.outputs) << " out";
    return table.Finish();
}

} // namespace vynhost
