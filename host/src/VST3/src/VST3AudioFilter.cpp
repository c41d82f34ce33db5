#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"

#include "vynaudiofilterhost/PluginCounts.h"

#include <exception>
#include <limits>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using Steinberg::Vst::BusDirection;
using Steinberg::Vst::BusInfo;

namespace {

// What a plug-in is told before the application has said anything.
constexpr int32 kDefaultBlockSize = 1024;
constexpr double kDefaultSampleRate = 44100.0;

} // namespace

bool VST3AudioFilter::IsMusicDevice() const {
    return mInstrument;
}

bool VST3AudioFilter::RequiresSymmetricIO() const {
    return false;
}

void VST3AudioFilter::SetSampleRate(float sampleRate) {
    AudioFilter::SetSampleRate(sampleRate);
    mProcessContext.sampleRate = sampleRate;
    SetupProcessing();
}

void VST3AudioFilter::SetBlockSize(int blockSize) {
    AudioFilter::SetBlockSize(blockSize);
    SetupProcessing();
}

void VST3AudioFilter::SetupProcessing() {
    Steinberg::Vst::ProcessSetup setup{};
    setup.processMode =
        GetRenderingContext() == kRenderingContextOffline ? Steinberg::Vst::kOffline : Steinberg::Vst::kRealtime;
    setup.symbolicSampleSize = Steinberg::Vst::kSample32;
    setup.maxSamplesPerBlock = GetBlockSize() != 0 ? GetBlockSize() : kDefaultBlockSize;
    setup.sampleRate = GetSampleRate() != 0.0f ? double{GetSampleRate()} : kDefaultSampleRate;
    mProcessor->setupProcessing(setup);
}

void VST3AudioFilter::Resume() {
    SetupProcessing();
    mInputBusBuffers.Allocate(kMaxProcessBlock);
    mOutputBusBuffers.Allocate(kMaxProcessBlock);
    try {
        mComponent->setActive(true);
        if (GetSideChainTargetBusChannelCount() != 0)
            ActivateBuses(Steinberg::Vst::kInput, Steinberg::Vst::kAux);
        mProcessErrorTraced = false;
        // The base class asks once, in time for the channels that go around the plug-in.
        mLatency = kLatencyUnread;
        AudioFilter::Resume();
    } catch (...) {
        if (IsSuspended())
            Guarded([this] { Deactivate(); });
        throw;
    }
}

void VST3AudioFilter::Deactivate() {
    mComponent->setActive(false);
    mInputBusBuffers.Free();
    mOutputBusBuffers.Free();
}

void VST3AudioFilter::Suspend() {
    std::exception_ptr failure;
    try {
        AudioFilter::Suspend();
    } catch (...) {
        // A message or a listener: the filter is suspended all the same, and so must the plug-in be.
        failure = std::current_exception();
    }
    if (mProcessing) {
        mProcessing = false;
        mProcessor->setProcessing(false);
    }
    Deactivate();
    if (failure)
        std::rethrow_exception(failure);
}

void VST3AudioFilter::ActivateBuses(BusDirection direction, Steinberg::Vst::BusType type) {
    int32 const count = CountBuses(Steinberg::Vst::kAudio, direction);
    for (int32 index = 0; index < count; ++index) {
        BusInfo info{};
        if (mComponent->getBusInfo(Steinberg::Vst::kAudio, direction, index, info) == kResultOk && info.busType == type)
            mComponent->activateBus(Steinberg::Vst::kAudio, direction, index, true);
    }
}

std::int32_t VST3AudioFilter::ReadLatency() const {
    return PlausibleCount(static_cast<std::int32_t>(mProcessor->getLatencySamples()),
                          std::numeric_limits<std::int32_t>::max());
}

int VST3AudioFilter::GetInitialDelay() const {
    if (IsSuspended())
        return ReadLatency();
    if (mLatency.load(std::memory_order_relaxed) == kLatencyUnread)
        mLatency = ReadLatency();
    return mLatency.load(std::memory_order_relaxed);
}

int VST3AudioFilter::GetTail() const {
    return static_cast<int>(mProcessor->getTailSamples());
}

boost::intrusive_ptr<AudioFilter> VST3AudioFilter::Clone() const {
    boost::intrusive_ptr<AudioFilter> copy = AudioFilter::Clone();
    if (auto* const filter = dynamic_cast<VST3AudioFilter*>(copy.get())) {
        filter->mInputPoints = mInputPoints;
        filter->mOutputPoints = mOutputPoints;
    }
    return copy;
}

} // namespace vynaudiofilterhost::vst3
