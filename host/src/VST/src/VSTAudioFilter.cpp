#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"

#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vyncore/filesupport/File.h"

namespace vynaudiofilterhost::vst {

namespace {

constexpr int kMaxProcessBlock = 1024; ///< what applications are told; effects take any block

// What an effect is told before the application has said anything.
constexpr float kDefaultSampleRate = 44100.0f;
constexpr int kDefaultBlockSize = 2048;

// The one effect that is known to need more than its share.
constexpr char16_t kHighCPUEffect[] = u"2:1517179725 SimpleMastering";

} // namespace

VSTAudioFilter::VSTAudioFilter(UString const& uniqueID, UString const& modulePath, AEffect* effect, bool nameFromFile)
    : AudioFilter(uniqueID, UString()), VSTDispatcherBase(effect), mMusicDevice(ReadIsMusicDevice()) {
    try {
        Construct(modulePath, nameFromFile);
    } catch (...) {
        CloseEffect();
        throw;
    }
}

VSTAudioFilter::~VSTAudioFilter() {
    CloseEffect();
}

void VSTAudioFilter::Construct(UString const& modulePath, bool nameFromFile) {
    if (mMusicDevice)
        mEvents = std::make_unique<MidiEventBlock>();
    if (GetID() == kHighCPUEffect)
        SetHasHighCPU(true);
    mTimeInfo.SetSampleRate(GetSampleRate());
    // Some effects report values while they open.
    mListedParameters = GetEffect() ? PlausibleCount(GetEffect()->numParams, kMaxParameters) : 0;
    OpenEffect();
    ReadName(modulePath, nameFromFile);
    int const count = GetEffect() ? PlausibleCount(GetEffect()->numParams, kMaxParameters) : 0;
    mListedParameters = count;
    mParameterInfos.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        mParameterInfos.emplace_back(new VSTParameterInfo(GetEffect(), index));
    BuildIOConfiguration();
}

bool VSTAudioFilter::ReadIsMusicDevice() const {
    if (!GetEffect())
        return false;
    return (GetEffect()->flags & effFlagsIsSynth) != 0 ||
           Dispatch(effGetPlugCategory, 0, 0, nullptr, 0.0f) == kPlugCategSynth;
}

// From the registration on the effect's calls reach this filter: some call while they open.
void VSTAudioFilter::OpenEffect() {
    mRegistered = EffectRegistry::Add(
        GetEffect(), [this](std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt) {
            return AudioMasterCallback(opcode, index, value, ptr, opt);
        });
    Dispatch(effOpen, 0, 0, nullptr, 0.0f);
    Dispatch(effSetSampleRate, 0, 0, nullptr, kDefaultSampleRate);
    Dispatch(effSetBlockSize, 0, kDefaultBlockSize, nullptr, 0.0f);
}

void VSTAudioFilter::ReadName(UString const& modulePath, bool nameFromFile) {
    UString name = ReadEffectName(GetEffect());
    if (name.empty() || nameFromFile)
        name = vyncore::filesupport::File(modulePath).GetTitle();
    SetDisplayName(name);
}

// The registration goes first: what the effect asks while it closes needs no filter.
void VSTAudioFilter::CloseEffect() {
    DropEditor();
    if (mRegistered)
        EffectRegistry::Remove(GetEffect());
    mRegistered = false;
    for (auto const& info : mParameterInfos)
        info->Disconnect();
    Dispatch(effClose, 0, 0, nullptr, 0.0f);
}

int VSTAudioFilter::GetMaxProcessingBlockSize() const {
    return kMaxProcessBlock;
}

void VSTAudioFilter::SetSampleRate(float sampleRate) {
    AudioFilter::SetSampleRate(sampleRate);
    mTimeInfo.SetSampleRate(sampleRate);
    Dispatch(effSetSampleRate, 0, 0, nullptr, sampleRate);
}

void VSTAudioFilter::SetBlockSize(int blockSize) {
    AudioFilter::SetBlockSize(blockSize);
    Dispatch(effSetBlockSize, 0, blockSize, nullptr, 0.0f);
}

void VSTAudioFilter::SetCurrentOffset(std::int64_t offset) {
    mCurrentOffset = offset;
}

// From the return on no call of the effect's uses the host that was there before, also on threads of its own.
void VSTAudioFilter::SetAudioFilterHost(IAudioFilterHost* host) {
    AudioFilter::SetAudioFilterHost(host);
    EffectRegistry::WaitForCalls(GetEffect());
}

void VSTAudioFilter::Suspend() {
    mTimeInfo.SetPlaying(false);
    Dispatch(effStopProcess, 0, 0, nullptr, 0.0f);
    Dispatch(effMainsChanged, 0, 0, nullptr, 0.0f);
    AudioFilter::Suspend();
}

void VSTAudioFilter::Resume() {
    // The base class lets the process thread in: what that needs is there before. A filter that runs already renders
    // with what it has.
    bool const wasSuspended = IsSuspended();
    if (wasSuspended)
        AllocateChannels();
    AudioFilter::Resume();
    mTimeInfo.SetPlaying(true);
    Dispatch(effMainsChanged, 0, 1, nullptr, 0.0f);
    Dispatch(effStartProcess, 0, 0, nullptr, 0.0f);
    mTimeInfo.ResetPosition();
    // Some effects know their channels only now. Until then their blocks were silent.
    if (wasSuspended && !HasChannels())
        AllocateChannels();
}

bool VSTAudioFilter::RequiresSymmetricIO() const {
    return false;
}

bool VSTAudioFilter::IsMusicDevice() const {
    return mMusicDevice;
}

} // namespace vynaudiofilterhost::vst
