#include "vynhost/RenderReport.h"

#include "vynhost/ChannelFit.h"
#include "vynhost/JSONText.h"

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

namespace vynhost {

namespace {

double GetSeconds(RenderReport const& report, std::int64_t samples) {
    return static_cast<double>(samples) / report.sampleRate;
}

// A table of names and values that no locale of a plug-in's choosing can change.
class Table {
public:
    Table() {
        mText.imbue(std::locale::classic());
        mText << std::fixed;
    }

    std::ostringstream& Row(char const* name) {
        mText << "\n  " << std::left << std::setw(16) << name;
        return mText;
    }

    void Level(char const* name, double level) {
        Row(name) << std::setprecision(6) << level;
        if (level > 0.0)
            mText << "  " << std::setprecision(1) << 20.0 * std::log10(level) << " dBFS";
        else
            mText << "  silence";
    }

    void Samples(char const* name, RenderReport const& report, std::int64_t samples) {
        Row(name) << samples << " samples, " << std::setprecision(3) << GetSeconds(report, samples) << " s";
    }

    std::ostringstream& Text() { return mText; }

private:
    std::ostringstream mText;
};

} // namespace

std::string FormatJSON(RenderReport const& report) {
    nlohmann::ordered_json document;
    document["id"] = report.id;
    document["samples"] = report.samples;
    document["seconds"] = GetSeconds(report, report.samples);
    document["channelsIn"] = report.channelsIn;
    document["channelsOut"] = report.channelsOut;
    document["peakIn"] = report.peakIn;
    document["rmsIn"] = report.rmsIn;
    document["peakOut"] = report.peakOut;
    document["rmsOut"] = report.rmsOut;
    document["latency"] = report.latency;
    document["tail"] = report.tail;
    document["timesRealTime"] = report.timesRealTime;
    document["notes"] = report.notes;
    return ToText(document);
}

std::string FormatTable(RenderReport const& report) {
    Table table;
    table.Text() << report.name << "  " << report.id;
    table.Row("written") << report.outputPath;
    table.Row("format") << ChannelCountName(report.channelsOut) << ", " << report.sampleRate << " Hz, "
                        << report.sampleFormat;
    table.Samples("length", report, report.samples);
    table.Row("channels") << report.channelsIn << " in, " << report.channelsOut << " out";
    table.Level("peak in", report.peakIn);
    table.Level("RMS in", report.rmsIn);
    table.Level("peak out", report.peakOut);
    table.Level("RMS out", report.rmsOut);
    table.Samples("latency", report, report.latency);
    table.Samples("tail", report, report.tail);
    table.Row("speed") << std::setprecision(1) << report.timesRealTime << " times real time";
    for (std::string const& note : report.notes)
        table.Row("note") << note;
    table.Text() << '\n';
    return table.Text().str();
}

} // namespace vynhost
