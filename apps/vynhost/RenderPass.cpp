#include "vynhost/RenderPass.h"

#include "vynhost/ProgressLine.h"
#include "vynhost/TrackLayout.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace vynhost {

namespace {

std::optional<SideChainFile> OpenSideChain(RenderRequest const& request, AudioFormat const& main) {
    if (!request.sideChainPath)
        return std::nullopt;
    return std::optional<SideChainFile>(std::in_place, *request.sideChainPath, main);
}

// Ahead of the plan: what a value means, the range of a frequency for one, may depend on the rate.
boost::intrusive_ptr<vynaudiofilterhost::AudioFilter>
SetUp(boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, AudioFormat const& format, int blockSize) {
    filter->SetSampleRate(static_cast<float>(format.sampleRate));
    filter->SetBlockSize(blockSize);
    return filter;
}

void Measure(LevelMeter& meter, float* const* channels, int channelCount, int samples) {
    for (float* channel : std::span(channels, static_cast<std::size_t>(channelCount)))
        meter.Add({channel, static_cast<std::size_t>(samples)});
}

} // namespace

RenderPass::RenderPass(RenderRequest const& request, AutomationFile const& automation,
                       boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, std::optional<int> latency)
    : mRequest(request),
      mReader(request.inputPath),
      mSideChain(OpenSideChain(request, mReader.GetFormat())),
      mFilter(SetUp(std::move(filter), mReader.GetFormat(), request.blockSize)),
      mPlan(MakeFilterPlan(*mFilter, request, automation, mReader.GetFormat().sampleRate)),
      mSavedState(request.saveStatePath),
      mRenderer(*mFilter, MakeSetup(latency)),
      mOutputFormat(ChooseWavFormat(mReader.GetFormat(), mRenderer.GetOutputChannels())),
      mWriter(request.outputPath, mOutputFormat, mReader.GetSampleCount()) {}

RenderSetup RenderPass::MakeSetup(std::optional<int> latency) {
    AudioFormat const& format = mReader.GetFormat();
    TrackRequest track{LayoutOfFile(format), mRequest.layout, {}, mRequest.channels};
    if (mSideChain)
        track.sideChain = LayoutOfFile(mSideChain->GetFormat());
    RenderSetup setup{std::move(track), mReader.GetSampleCount(), static_cast<double>(format.sampleRate),
                      mRequest.blockSize, latency};
    setup.preparations = std::move(mPlan.preparations);
    setup.automation = std::move(mPlan.automation);
    if (mSavedState)
        setup.prepared = [this](vynaudiofilterhost::AudioFilter& filter) { mSavedState->Capture(filter); };
    return setup;
}

RenderOutcome const& RenderPass::Run() {
    ProgressLine progress("rendering");
    std::int64_t written = 0;
    auto const source = [&](float* const* channels, int samples) {
        mReader.Read(channels, samples);
        Measure(mMeterIn, channels, mReader.GetFormat().channels, samples);
        if (mSideChain)
            mSideChain->Read(channels + mReader.GetFormat().channels, samples);
    };
    auto const sink = [&](float* const* channels, int samples) {
        Measure(mMeterOut, channels, mRenderer.GetOutputChannels(), samples);
        mWriter.Write(channels, samples);
        written += samples;
        progress.Show(static_cast<double>(written) / static_cast<double>(mReader.GetSampleCount()));
    };
    mOutcome = mRenderer.Run(source, sink);
    return mOutcome;
}

RenderReport RenderPass::Finish() {
    if (mSavedState)
        mSavedState->Write();
    mWriter.Commit();
    RenderReport report;
    report.id = vyncore::string::UTF16to8(mFilter->GetID());
    report.name = vyncore::string::UTF16to8(mFilter->GetDisplayName());
    report.outputPath = mRequest.outputPath;
    report.sampleFormat = GetSampleFormatName(mOutputFormat);
    report.sampleRate = mOutputFormat.sampleRate;
    report.samples = mOutcome.samples;
    report.channelsIn = mReader.GetFormat().channels;
    report.channelsOut = mOutputFormat.channels;
    report.peakIn = mMeterIn.GetPeak();
    report.rmsIn = mMeterIn.GetRMS();
    report.peakOut = mMeterOut.GetPeak();
    report.rmsOut = mMeterOut.GetRMS();
    report.latency = mOutcome.latency;
    report.tail = mOutcome.tail;
    report.timesRealTime = mOutcome.timesRealTime;
    CollectNotes(report);
    return report;
}

void RenderPass::CollectNotes(RenderReport& report) const {
    report.notes = mPlan.notes;
    report.notes.insert(report.notes.end(), mOutcome.notes.begin(), mOutcome.notes.end());
    if (mSideChain)
        std::ranges::move(mSideChain->Describe(mReader.GetSampleCount()), std::back_inserter(report.notes));
    if (mMeterIn.GetNonFiniteCount() > 0)
        report.notes.push_back(std::to_string(mMeterIn.GetNonFiniteCount()) +
                               " samples of the file are not finite (NaN or infinite) and were taken as 0");
    if (mMeterOut.GetNonFiniteCount() > 0)
        report.notes.push_back(std::to_string(mMeterOut.GetNonFiniteCount()) +
                               " samples from the plug-in are not finite (NaN or infinite) and were written as 0");
    if (mWriter.GetClippedCount() > 0)
        report.notes.push_back(std::to_string(mWriter.GetClippedCount()) +
                               " samples are beyond full scale and were clipped: the file is " + report.sampleFormat);
    if (!HaveSameSampleFormat(mReader.GetFormat(), mOutputFormat))
        report.notes.push_back("written as " + report.sampleFormat +
                               ": a WAV file does not keep the sample format of the input");
    if (mWriter.IsLong())
        report.notes.push_back("too long for a WAV file: written as RF64");
}

} // namespace vynhost
