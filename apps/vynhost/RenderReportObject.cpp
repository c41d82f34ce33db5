#include "vynhost/RenderReportObject.h"

#include "vynhost/ScriptItems.h"

#include "vyncore/strings/StringUtils.h"

#include <utility>

namespace vynhost {

namespace {

ScriptItems<RenderReportObject>::Registrar const kRegistrar(&ScriptItems<RenderReportObject>::Enter);

} // namespace

RenderReportObject::RenderReportObject() : ScriptObject(GetClassname()) {}

void RenderReportObject::DefineObject() {
    using Self = RenderReportObject;
    ScriptItems<Self> items;
    items.Property("samples", "Samples in each channel of the file that was written.", &Self::GetSamples);
    items.Property("seconds", "How long that file is.", &Self::GetSeconds);
    items.Property("channels", "Channels of that file.", &Self::GetChannels);
    items.Property("peakIn", "The greatest sample of the input.", &Self::GetPeakIn);
    items.Property("rmsIn", "The RMS level of the input.", &Self::GetRMSIn);
    items.Property("peakOut", "The greatest sample of the output.", &Self::GetPeakOut);
    items.Property("rmsOut", "The RMS level of the output.", &Self::GetRMSOut);
    items.Property("latency", "The plug-in's latency in samples, which is compensated.", &Self::GetLatency);
    items.Property("timesRealTime", "How many times faster than it plays.", &Self::GetTimesRealTime);
    items.Property("notes", "What a user should know besides.", &Self::GetNotes);
}

void RenderReportObject::Initialize(RenderReport report) {
    mReport = std::move(report);
}

double RenderReportObject::GetSamples() const {
    return static_cast<double>(mReport.samples);
}

double RenderReportObject::GetSeconds() const {
    return mReport.sampleRate > 0 ? GetSamples() / mReport.sampleRate : 0.0;
}

int RenderReportObject::GetChannels() const {
    return mReport.channelsOut;
}

double RenderReportObject::GetPeakIn() const {
    return mReport.peakIn.value_or(0.0);
}

double RenderReportObject::GetRMSIn() const {
    return mReport.rmsIn.value_or(0.0);
}

double RenderReportObject::GetPeakOut() const {
    return mReport.peakOut;
}

double RenderReportObject::GetRMSOut() const {
    return mReport.rmsOut;
}

int RenderReportObject::GetLatency() const {
    return mReport.latency;
}

double RenderReportObject::GetTimesRealTime() const {
    return mReport.timesRealTime;
}

std::vector<vyncore::UString> RenderReportObject::GetNotes() const {
    std::vector<vyncore::UString> notes;
    for (std::string const& note : mReport.notes)
        notes.push_back(vyncore::string::UTF8to16(note));
    return notes;
}

} // namespace vynhost
