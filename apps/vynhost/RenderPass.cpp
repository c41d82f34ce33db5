#include "vynhost/RenderPass.h"

#include "vynhost/GuardNotes.h"
#include "vynhost/MainBuses.h"
#include "vynhost/ProgressLine.h"
#include "vynhost/TrackLayout.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

// Ahead of the plan: what a value means, the range of a frequency for one, may depend on the rate.
boost::intrusive_ptr<vynaudiofilterhost::AudioFilter>
SetUp(boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, RenderRequest const& request,
      AudioFormat const& format) {
    if (request.midiPath && !filter->IsMusicDevice())
        throw std::runtime_error("is no instrument: it plays no MIDI file");
    filter->SetSampleRate(static_cast<float>(format.sampleRate));
    filter->SetBlockSize(request.blockSize);
    return filter;
}

vynmediatypes::AudioChannelLayout GetMainOutputLayout(vynaudiofilterhost::AudioFilter const& filter) {
    BusSpan const main = FindMainOutput(filter);
    if (main.bus < 0)
        return {};
    return filter.GetOutputBuses()[static_cast<std::size_t>(main.bus)].GetLayout();
}

void Measure(LevelMeter& meter, float* const* channels, int channelCount, int samples) {
    for (float* channel : std::span(channels, static_cast<std::size_t>(channelCount)))
        meter.Add({channel, static_cast<std::size_t>(samples)});
}

} // namespace

RenderPass::RenderPass(RenderRequest const& request, RenderScore const& score,
                       boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, std::optional<int> latency)
    : mRequest(request),
      mSource(request, score.song),
      mFilter(SetUp(std::move(filter), request, mSource.GetFormat())),
      mPlan(MakeFilterPlan(*mFilter, request, score.automation, mSource.GetFormat().sampleRate)),
      mSavedState(request.saveStatePath),
      mRenderer(*mFilter, MakeSetup(score.song, latency)),
      mOutputFormat(ChooseWavFormat(mSource.GetFormat(), mRenderer.GetOutputChannels())),
      mWriter(request.outputPath, mOutputFormat, mSource.GetSampleCount()) {}

// An instrument that plays alone hears as many silent channels as it gives.
TrackRequest RenderPass::MakeTrack() const {
    return {mSource.HasFile() ? LayoutOfFile(mSource.GetFormat()) : GetMainOutputLayout(*mFilter), mRequest.layout,
            mSource.GetSideChainLayout(), mRequest.channels, mRequest.basis};
}

RenderSetup RenderPass::MakeSetup(MidiSong const& song, std::optional<int> latency) {
    auto const sampleRate = static_cast<double>(mSource.GetFormat().sampleRate);
    RenderSetup setup{MakeTrack(), mSource.GetSampleCount(), sampleRate, mRequest.blockSize, latency};
    setup.hasInput = mSource.HasFile();
    setup.guarded = mRequest.guarded;
    setup.preparations = std::move(mPlan.preparations);
    if (mRequest.settle)
        setup.preparations.push_back(mRequest.settle);
    setup.automation = std::move(mPlan.automation);
    setup.song = mRequest.midiPath ? &song : nullptr;
    if (mRequest.tailSeconds)
        setup.tail = std::llround(*mRequest.tailSeconds * sampleRate);
    if (mSavedState)
        setup.prepared = [this](vynaudiofilterhost::AudioFilter& filter) { mSavedState->Capture(filter); };
    return setup;
}

RenderOutcome const& RenderPass::Run() {
    ProgressLine progress("rendering");
    std::int64_t written = 0;
    auto const source = [&](float* const* channels, int samples) {
        mSource.Read(channels, mRenderer.GetSourceChannels(), samples);
    };
    auto const sink = [&](float* const* channels, int samples) {
        Measure(mMeterOut, channels, mRenderer.GetOutputChannels(), samples);
        mWriter.Write(channels, samples);
        written += samples;
        progress.Show(static_cast<double>(written) / static_cast<double>(mSource.GetSampleCount()));
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
    report.channelsIn = mSource.GetFormat().channels;
    report.channelsOut = mOutputFormat.channels;
    if (mSource.HasFile()) {
        report.peakIn = mSource.GetMeter().GetPeak();
        report.rmsIn = mSource.GetMeter().GetRMS();
    }
    report.peakOut = mMeterOut.GetPeak();
    report.rmsOut = mMeterOut.GetRMS();
    report.latency = mOutcome.latency;
    report.tail = mOutcome.tail;
    report.timesRealTime = mOutcome.timesRealTime;
    report.guard = mOutcome.guard;
    CollectNotes(report);
    return report;
}

void RenderPass::CollectNotes(RenderReport& report) const {
    report.notes = mPlan.notes;
    report.notes.insert(report.notes.end(), mOutcome.notes.begin(), mOutcome.notes.end());
    std::ranges::move(mSource.Describe(), std::back_inserter(report.notes));
    if (mOutcome.guard)
        std::ranges::move(DescribeGuard(*mOutcome.guard), std::back_inserter(report.notes));
    if (mMeterOut.GetNonFiniteCount() > 0)
        report.notes.push_back(std::to_string(mMeterOut.GetNonFiniteCount()) +
                               " samples from the plug-in are not finite (NaN or infinite) and were written as 0");
    if (mWriter.GetClippedCount() > 0)
        report.notes.push_back(std::to_string(mWriter.GetClippedCount()) +
                               " samples are beyond full scale and were clipped: the file is " + report.sampleFormat);
    if (!HaveSameSampleFormat(mSource.GetFormat(), mOutputFormat))
        report.notes.push_back("written as " + report.sampleFormat +
                               ": a WAV file does not keep the sample format of the input");
    if (mWriter.IsLong())
        report.notes.push_back("too long for a WAV file: written as RF64");
}

} // namespace vynhost
