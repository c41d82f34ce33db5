#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <algorithm>

namespace vynaudiofilterhost::vst3 {

using Steinberg::kResultOk;
using Steinberg::Vst::ProcessContext;
using Steinberg::Vst::ProcessData;
using vyncore::utility::HighPrecisionTime;

namespace {

vyncore::debug::TracePoint theProcessTrace(6, "VST3AudioFilter::Process");

} // namespace

int VST3AudioFilter::GetMaxProcessingBlockSize() const {
    return kMaxProcessBlock;
}

void VST3AudioFilter::SetCurrentOffset(std::int64_t offset) {
    mProcessContext.projectTimeSamples = offset;
}

ProcessData VST3AudioFilter::MakeProcessData() {
    ProcessData data;
    data.processMode = Steinberg::Vst::kRealtime;
    data.symbolicSampleSize = Steinberg::Vst::kSample32;
    data.numInputs = mInputBusBuffers.GetCount();
    data.numOutputs = mOutputBusBuffers.GetCount();
    data.inputs = mInputBusBuffers.GetData();
    data.outputs = mOutputBusBuffers.GetData();
    data.inputParameterChanges = &mInputChanges;
    data.outputParameterChanges = &mOutputChanges;
    data.inputEvents = mInputEvents.get();
    data.outputEvents = mOutputEvents.get();
    data.processContext = &mProcessContext;
    return data;
}

void VST3AudioFilter::Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags) {
    outFlags.ClearAll();
    try {
        UpdateTransport();
        mInputBusBuffers.SetSilence(inFlags);
        mOutputBusBuffers.ClearSilence();
        for (std::int32_t offset = 0; offset < numSamples;) {
            std::int32_t const slice = std::min(numSamples - offset, kMaxProcessBlock);
            ProcessSlice(in, out, offset, slice);
            offset += slice;
        }
        outFlags = mOutputBusBuffers.GetSilence();
    } catch (...) {
        // The block is lost, and the next one starts as usual: what a plug-in throws stays out of the render thread.
    }
}

void VST3AudioFilter::UpdateTransport() {
    if (!GetAudioFilterHost()) {
        if (IsSuspended())
            mProcessContext.state &= ~static_cast<Steinberg::uint32>(ProcessContext::kPlaying);
        else
            mProcessContext.state |= ProcessContext::kPlaying;
        return;
    }
    mProcessContext.systemTime =
        static_cast<std::int64_t>(HighPrecisionTime::ConvertToNanos(HighPrecisionTime::GetCurrentTimeStamp()));
    mProcessContext.state = ProcessContext::kSystemTimeValid;
    PlaybackState playback;
    if (!GetAudioFilterHost()->GetPlaybackState(playback))
        return;
    mProcessContext.tempo = playback.mTempo;
    mProcessContext.timeSigNumerator = playback.mTimeSignatureNumerator;
    mProcessContext.timeSigDenominator = playback.mTimeSignatureDenominator;
    mProcessContext.projectTimeMusic = playback.mMusicalPosition;
    mProcessContext.barPositionMusic = playback.mBarStartPosition;
    mProcessContext.state |= ProcessContext::kProjectTimeMusicValid | ProcessContext::kTempoValid |
                             ProcessContext::kBarPositionValid | ProcessContext::kTimeSigValid;
    mProcessContext.state |= playback.mIsPlaying ? ProcessContext::kPlaying : 0;
    mProcessContext.state |= playback.mIsRecording ? ProcessContext::kRecording : 0;
    mProcessContext.state |= playback.mIsLooping ? ProcessContext::kCycleActive : 0;
}

void VST3AudioFilter::ProcessSlice(float* const* in, float* const* out, std::int32_t offset, std::int32_t numSamples) {
    // Made anew for each slice: a plug-in can write to it.
    ProcessData data = MakeProcessData();
    data.numSamples = numSamples;
    mInputBusBuffers.Point(in, offset);
    mOutputBusBuffers.Point(out, offset);
    mInputPoints.DrainToParameterChanges(mInputChanges);
    mOutputChanges.Clear();
    if (!mProcessing) {
        mProcessor->setProcessing(true);
        mProcessing = true;
    }
    if (Steinberg::tresult const result = mProcessor->process(data); result != kResultOk)
        TraceProcessError(result);
    if (!mOutputChanges.IsEmpty())
        mOutputPoints.CollectFromParameterChanges(mOutputChanges);
    mInputChanges.Clear();
    ClearEvents();
    mProcessContext.projectTimeSamples += numSamples;
}

void VST3AudioFilter::TraceProcessError(Steinberg::tresult result) {
    if (mProcessErrorTraced)
        return;
    mProcessErrorTraced = true;
    DebugTrace(theProcessTrace, [result] {
        vyncore::oUTF16StringStream stream;
        stream << "failed with result: " << result;
        return stream.str();
    });
}

void VST3AudioFilter::ClearEvents() {
    if (mInputEvents)
        mInputEvents->Clear();
    if (mOutputEvents)
        mOutputEvents->Clear();
}

void VST3AudioFilter::FlushMessageQueue() {
    AudioFilter::FlushMessageQueue();
    FlushParametersToProcessor();
}

void VST3AudioFilter::FlushParametersToProcessor() {
    if (!IsSuspended())
        return;
    try {
        SendPendingValues();
    } catch (...) {
        // As in Process.
    }
}

void VST3AudioFilter::SendPendingValues() {
    mOutputChanges.Clear();
    if (!mInputPoints.DrainToParameterChanges(mInputChanges))
        return;
    ProcessData data = MakeProcessData();
    data.numSamples = 0;
    data.numInputs = 0;
    data.numOutputs = 0;
    data.inputs = nullptr;
    data.outputs = nullptr;
    mProcessor->setProcessing(true);
    Steinberg::tresult const result = mProcessor->process(data);
    mProcessor->setProcessing(false);
    if (result != kResultOk)
        TraceProcessError(result);
    mOutputPoints.CollectFromParameterChanges(mOutputChanges);
    mInputChanges.Clear();
    ClearEvents();
}

} // namespace vynaudiofilterhost::vst3
