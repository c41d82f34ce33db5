#include "vynhost/RenderReport.h"

#include "vynhost/ChannelFit.h"
#include "vynhost/JSONText.h"
#include "vynhost/TextTable.h"

#include <iomanip>

namespace vynhost {

namespace {

double GetSeconds(RenderReport const& report, std::int64_t samples) {
    return static_cast<double>(samples) / report.sampleRate;
}

void WriteSamples(TextTable& table, char const* name, RenderReport const& report, std::int64_t samples) {
    table.Row(name) << samples << " samples, " << std::setprecision(3) << GetSeconds(report, samples) << " s";
}

nlohmann::ordered_json ToJSON(std::optional<double> const& level) {
    return level ? nlohmann::ordered_json(*level) : nlohmann::ordered_json();
}

nlohmann::ordered_json ToJSON(std::optional<vynguard::OutputGuard::Report> const& guard) {
    if (!guard)
        return {};
    return {{"silenced", guard->silenced}, {"modeRestored", guard->modeRestored}};
}

} // namespace

std::string FormatJSON(RenderReport const& report) {
    nlohmann::ordered_json document;
    document["id"] = report.id;
    document["samples"] = report.samples;
    document["seconds"] = GetSeconds(report, report.samples);
    document["channelsIn"] = report.channelsIn;
    document["channelsOut"] = report.channelsOut;
    document["peakIn"] = ToJSON(report.peakIn);
    document["rmsIn"] = ToJSON(report.rmsIn);
    document["peakOut"] = report.peakOut;
    document["rmsOut"] = report.rmsOut;
    document["latency"] = report.latency;
    document["tail"] = report.tail;
    document["timesRealTime"] = report.timesRealTime;
    document["guard"] = ToJSON(report.guard);
    document["notes"] = report.notes;
    return ToText(document);
}

std::string FormatTable(RenderReport const& report) {
    TextTable table(report.name + "  " + report.id);
    table.Row("written") << report.outputPath;
    table.Row("format") << ChannelCountName(report.channelsOut) << ", " << report.sampleRate << " Hz, "
                        << report.sampleFormat;
    WriteSamples(table, "length", report, report.samples);
    table.Row("channels") << report.channelsIn << " in, " << report.channelsOut << " out";
    if (report.peakIn)
        table.Level("peak in", *report.peakIn);
    if (report.rmsIn)
        table.Level("RMS in", *report.rmsIn);
    table.Level("peak out", report.peakOut);
    table.Level("RMS out", report.rmsOut);
    WriteSamples(table, "latency", report, report.latency);
    WriteSamples(table, "tail", report, report.tail);
    table.Row("speed") << std::setprecision(1) << report.timesRealTime << " times real time";
    for (std::string const& note : report.notes)
        table.Row("note") << note;
    return table.Finish();
}

} // namespace vynhost
