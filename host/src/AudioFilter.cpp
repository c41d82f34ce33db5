#include "vynaudiofilterhost/AudioFilter.h"

#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/ModuleUITimer.h"
#include "vyncore/debug/Trace.h"

#include <limits>

namespace vynaudiofilterhost {

using vynmediatypes::AudioBusDescription;

AudioFilter::AudioFilter(UString const& uniqueID, UString const& displayName)
    : mUniqueID(uniqueID),
      mDisplayName(displayName),
      mMainTargetBus(UString(), vynmediatypes::AudioChannelLayout(), AudioBusDescription::kTypeMain),
      mSideChainTargetBus(UString(), vynmediatypes::AudioChannelLayout(), AudioBusDescription::kTypeSideChain) {}

AudioFilter::~AudioFilter() = default;

void AudioFilter::SetAudioFilterHost(IAudioFilterHost* host) {
    mHost.store(host, std::memory_order_seq_cst);
}

void AudioFilter::SetSampleRate(float sampleRate) {
    mSampleRate = sampleRate;
}

void AudioFilter::SetBlockSize(int blockSize) {
    if (mBlockSize != blockSize)
        mBlockSize = blockSize;
}

int AudioFilter::GetMaxProcessingBlockSize() const {
    return std::numeric_limits<std::int32_t>::max();
}

void AudioFilter::SetCurrentOffset(std::int64_t) {}

void AudioFilter::Process(float**, float**, int, ChannelFlags, ChannelFlags& outFlags) {
    outFlags.SetAll();
}

bool AudioFilter::IsOfflineProcess() const {
    return false;
}

bool AudioFilter::IsGenerator() const {
    return false;
}

bool AudioFilter::CanChangeDuration() const {
    return false;
}

void AudioFilter::SetSelectionLeft(double position) {
    mSelectionLeft = position;
}

double AudioFilter::GetSelectionLeft() const {
    return mSelectionLeft;
}

void AudioFilter::SetCurrentDuration(double duration) {
    mCurrentDuration = duration;
}

double AudioFilter::GetCurrentDuration() const {
    return mCurrentDuration;
}

double AudioFilter::GetProcessedDuration() const {
    return mCurrentDuration;
}

double AudioFilter::GetOriginalPosition(double processedPosition) const {
    return processedPosition;
}

double AudioFilter::GetProcessedPosition(double originalPosition) const {
    return originalPosition;
}

double AudioFilter::GetProcessedScale() const {
    return 1.0;
}

int AudioFilter::OfflineProcess(float**, float**, int, int, int) {
    return 0;
}

int AudioFilter::GetTail() const {
    return 0;
}

int AudioFilter::GetMaxOutputBlockSize(int) const {
    return 0;
}

bool AudioFilter::OfflineProcessFinished() {
    return true;
}

void AudioFilter::Suspend() {
    mMessageHandler.SetProcessing(false);
    mSuspended.store(true, std::memory_order_relaxed);
    // Off the main thread the tick is out of reach: a Resume there took no reference either.
    if (CurrentThreadIDIsMainThreadID())
        ReleaseTimerRef();
    std::exception_ptr const failure = FlushAll();
    mSuspendedStateChanged(true);
    if (failure)
        std::rethrow_exception(failure);
}

// A message that throws is done with; those behind it must not stay in a suspended filter. Gives what was thrown first.
std::exception_ptr AudioFilter::FlushAll() {
    constexpr int kMostFailures = 100000; // a subclass's own flush may never end to throw
    std::exception_ptr failure;
    for (int failures = 0; failures < kMostFailures; ++failures) {
        try {
            FlushMessageQueue();
            break;
        } catch (...) {
            if (!failure)
                failure = std::current_exception();
        }
    }
    return failure;
}

void AudioFilter::Resume() {
    FlushMessageQueue();
    StartProcessing();
    mSuspendedStateChanged(false);
}

void AudioFilter::StartProcessing() {
    bool timerTaken = false;
    try {
        mMessageHandler.SetProcessing(true);
        if (CurrentThreadIDIsMainThreadID()) {
            AddTimerRef();
            timerTaken = true;
        }
        mSuspended.store(false, std::memory_order_relaxed);
        BuildChannelMaps();
    } catch (...) {
        // Out of memory, or a plug-in that threw from the first tick: the filter is as suspended as it was.
        mMessageHandler.SetProcessing(false);
        mSuspended.store(true, std::memory_order_relaxed);
        if (timerTaken)
            ReleaseTimerRef();
        throw;
    }
}

void AudioFilter::SetRenderingContext(RenderingContext context) {
    mRenderingContext = context;
}

void AudioFilter::SetDoSpectral(bool) {}

void AudioFilter::SetPreviewMode(bool) {}

int AudioFilter::GetInitialDelay() const {
    return 0;
}

bool AudioFilter::HasCustomEditor() const {
    return false;
}

boost::intrusive_ptr<AudioFilterEditor> AudioFilter::CreateCustomEditor() {
    return nullptr;
}

void AudioFilter::DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor>) {}

bool AudioFilter::IsProxy() const {
    return false;
}

boost::intrusive_ptr<AudioFilterDescriptor> AudioFilter::CreateFilterDescriptor(PluginLocator const&, bool) {
    return nullptr;
}

void AudioFilter::FlushMessageQueue() {
    mMessageHandler.FlushMessageQueue();
}

bool AudioFilter::RequiresSymmetricIO() const {
    return true;
}

bool AudioFilter::IsMusicDevice() const {
    return false;
}

void AudioFilter::ScheduleMIDIEvent(bool, unsigned int, unsigned char, unsigned char, unsigned char) {}

void AudioFilter::OnUITimerTick() {
    FlushMessageQueue();
}

void AudioFilter::Post(boost::intrusive_ptr<Message> message) {
    mMessageHandler.Post(std::move(message));
    if (IsSuspended())
        FlushMessageQueue();
}

void AudioFilter::SendLatencyChanged() {
    if (CurrentThreadIDIsMainThreadID())
        mLatencyChanged();
    else
        vyncore::debug::Trace(0, "AudioFilter", "SendLatencyChanged from non-main thread");
}

void AudioFilter::EditorAttached() {
    AddTimerRef();
}

void AudioFilter::EditorDetached() {
    ReleaseTimerRef();
}

void AudioFilter::AddTimerRef() {
    if (++mUITimerReferenceCount != 1)
        return;
    try {
        mUITimerConnection = ModuleUITimer::GetInstance().ConnectTick([this] { Tick(); });
        OnUITimerTick();
    } catch (...) {
        ReleaseTimerRef();
        throw;
    }
}

void AudioFilter::Tick() {
    // A plug-in's teardown may run the main thread's calls from within, with half of the filter gone.
    if (IsBeingDestroyed())
        return;
    // A tick may finish the message that holds the last reference but this one.
    boost::intrusive_ptr<AudioFilter> const alive(this);
    OnUITimerTick();
}

void AudioFilter::ReleaseTimerRef() {
    if (mUITimerReferenceCount > 0 && --mUITimerReferenceCount == 0)
        mUITimerConnection.disconnect();
}

} // namespace vynaudiofilterhost
