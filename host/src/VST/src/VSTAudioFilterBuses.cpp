#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringStreams.h"

#include <algorithm>
#include <utility>

namespace vynaudiofilterhost::vst {

using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

constexpr int kProgress = 6;
constexpr std::intptr_t kFirstVersionWithArrangements = 2300;

vyncore::debug::TracePoint theRequestTrace(kProgress, "VSTAudioFilter::RequestIOConfiguration()");
vyncore::debug::TracePoint theBuildTrace(kProgress, "VST");

/// What the buses of a side are called.
struct BusNames {
    char16_t const* mono;
    char16_t const* stereo;
    char16_t const* surround51;
    char16_t const* multiMono;
};

constexpr BusNames kInputNames{u"Mono In", u"Stereo In", u"Surround 5.1 In", u"Multi-Mono In"};
constexpr BusNames kOutputNames{u"Mono Out", u"Stereo Out", u"Surround 5.1 Out", u"Multi-Mono Out"};

AudioBusDescription MakeMultiMono(char16_t const* name, int channels) {
    return {name, AudioChannelLayout(static_cast<std::size_t>(channels)), AudioBusDescription::kTypeMain};
}

AudioBusDescription BusOfArrangement(VstSpeakerArrangement const& arrangement, BusNames const& names) {
    constexpr auto kMain = AudioBusDescription::kTypeMain;
    if (arrangement.type == kSpeakerArrMono && arrangement.numChannels == 1)
        return AudioBusDescription::CreateMono(names.mono, kMain);
    if (arrangement.type == kSpeakerArrStereo)
        return AudioBusDescription::CreateStereo(names.stereo, kMain);
    if (arrangement.type == kSpeakerArr51)
        return AudioBusDescription::CreateSurround51(names.surround51, kMain);
    return MakeMultiMono(names.multiMono, arrangement.numChannels);
}

AudioBusDescription BusOfCount(int channels, BusNames const& names) {
    constexpr auto kMain = AudioBusDescription::kTypeMain;
    switch (channels) {
    case 1:
        return AudioBusDescription::CreateMono(names.mono, kMain);
    case 2:
        return AudioBusDescription::CreateStereo(names.stereo, kMain);
    case 6:
        return AudioBusDescription::CreateSurround51(names.surround51, kMain);
    default:
        return MakeMultiMono(names.multiMono, channels);
    }
}

void TraceOutcome(bool succeeded, std::size_t inputs, std::size_t outputs) {
    vyncore::debug::DebugTrace(theRequestTrace, [&] {
        vyncore::oUTF16StringStream stream;
        stream << (succeeded ? u"effSetSpeakerArrangement succeeded, inputs="
                             : u"effSetSpeakerArrangement failed, inputs=")
               << inputs << u", outputs=" << outputs;
        return stream.str();
    });
}

// An effect that speaks of more channels than it has may not have written so many speakers either.
bool IsPlausible(VstSpeakerArrangement const* arrangement, std::int32_t channelsOfEffect) {
    constexpr std::int32_t kSpeakersOfAnyRecord = 8;
    return arrangement && arrangement->numChannels > 0 &&
           arrangement->numChannels <= std::max(channelsOfEffect, kSpeakersOfAnyRecord);
}

} // namespace

std::int32_t VSTAudioFilter::InputCount() const noexcept {
    return GetEffect() ? PlausibleCount(GetEffect()->numInputs, kMaxVSTChannels) : 0;
}

std::int32_t VSTAudioFilter::OutputCount() const noexcept {
    return GetEffect() ? PlausibleCount(GetEffect()->numOutputs, kMaxVSTChannels) : 0;
}

void VSTAudioFilter::RequestIOConfiguration(Layouts const& inputLayouts, Layouts const& outputLayouts) {
    mMonoExpansion = false;
    mInputArrangement.reset();
    mOutputArrangement.reset();
    if (inputLayouts.size() != 1 || outputLayouts.size() != 1)
        return;
    // Copies: they may be those of the buses that are about to go.
    AudioChannelLayout const input(inputLayouts.front().begin(), inputLayouts.front().end());
    AudioChannelLayout const output(outputLayouts.front().begin(), outputLayouts.front().end());
    if (NegotiateArrangements(input, output))
        ReadArrangements();
    BuildIOConfiguration();
    if (CanExpandMono(input, output))
        ShowAsMono();
}

// Whether the effect was asked: what it then has is told by its own arrangements, whatever it answers here.
bool VSTAudioFilter::NegotiateArrangements(AudioChannelLayout const& input, AudioChannelLayout const& output) {
    if (Dispatch(effGetVstVersion, 0, 0, nullptr, 0.0f) < kFirstVersionWithArrangements || output.empty())
        return false;
    // An effect may have kept what it was asked before, until it has been asked anew.
    auto const formerInput = std::exchange(mAskedInput, BuildSpeakerArrangement(input));
    auto const formerOutput = std::exchange(mAskedOutput, BuildSpeakerArrangement(output));
    bool const accepted = Dispatch(effSetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(mAskedInput.get()),
                                   mAskedOutput.get(), 0.0f) != 0;
    TraceOutcome(accepted, input.size(), output.size());
    return true;
}

void VSTAudioFilter::ReadArrangements() {
    VstSpeakerArrangement* input = nullptr;
    VstSpeakerArrangement* output = nullptr;
    if (Dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&input), &output, 0.0f) == 0) {
        vyncore::debug::DebugTrace(theRequestTrace, [] { return "effGetSpeakerArrangement failed"; });
        return;
    }
    vyncore::debug::DebugTrace(theRequestTrace, [] { return "effGetSpeakerArrangement succeeded"; });
    if (!IsPlausible(input, InputCount()) || !IsPlausible(output, OutputCount()))
        return;
    mInputArrangement = CopySpeakerArrangement(*input);
    mOutputArrangement = CopySpeakerArrangement(*output);
}

bool VSTAudioFilter::CanExpandMono(AudioChannelLayout const& input, AudioChannelLayout const& output) const {
    return GetNumberOfInputChannels() == 2 && GetNumberOfOutputChannels() == 2 && GetEffect() &&
           (GetEffect()->flags & effFlagsCanMono) != 0 && input.size() == 1 && output.size() == 1;
}

void VSTAudioFilter::ShowAsMono() {
    vyncore::debug::DebugTrace(theRequestTrace, [] { return "CanMono"; });
    mMonoExpansion = true;
    ClearBusConfiguration();
    AddInputBus(AudioBusDescription::CreateMono(kInputNames.mono, AudioBusDescription::kTypeMain));
    AddOutputBus(AudioBusDescription::CreateMono(kOutputNames.mono, AudioBusDescription::kTypeMain));
    CountChannels();
}

void VSTAudioFilter::BuildIOConfiguration() {
    ClearBusConfiguration();
    if (mInputArrangement && mOutputArrangement)
        BuildBusesFromArrangements();
    else
        BuildBusesFromCounts();
    CountChannels();
}

void VSTAudioFilter::BuildBusesFromArrangements() {
    AddInputBus(BusOfArrangement(*mInputArrangement, kInputNames));
    AddOutputBus(BusOfArrangement(*mOutputArrangement, kOutputNames));
    AddFurtherBuses(kDirectionInput, mInputArrangement->numChannels, InputCount());
    AddFurtherBuses(kDirectionOutput, mOutputArrangement->numChannels, OutputCount());
}

void VSTAudioFilter::AddFurtherBuses(Direction direction, int first, int count) {
    constexpr auto kMain = AudioBusDescription::kTypeMain;
    constexpr auto kSideChain = AudioBusDescription::kTypeSideChain;
    for (int channel = first; channel < count;) {
        bool const stereo = IsStereoPair(direction, channel, count);
        if (direction == kDirectionInput)
            AddInputBus(stereo ? AudioBusDescription::CreateStereo(u"Stereo Side-Chain", kSideChain)
                               : AudioBusDescription::CreateMono(u"Side-Chain", kSideChain));
        else
            AddOutputBus(stereo ? AudioBusDescription::CreateStereo(kOutputNames.stereo, kMain)
                                : AudioBusDescription::CreateMono(kOutputNames.mono, kMain));
        channel += stereo ? 2 : 1;
    }
}

bool VSTAudioFilter::IsStereoPair(Direction direction, int channel, int count) const {
    struct {
        VstPinProperties properties;
        unsigned char overrun[128];
    } pin{};
    auto const opcode = direction == kDirectionInput ? effGetInputProperties : effGetOutputProperties;
    return Dispatch(opcode, channel, 0, &pin, 0.0f) != 0 && (pin.properties.flags & kVstPinIsStereo) != 0 &&
           channel < count - 1;
}

void VSTAudioFilter::BuildBusesFromCounts() {
    int const inputs = InputCount();
    int const outputs = OutputCount();
    vyncore::debug::DebugTrace(theBuildTrace, [inputs, outputs] {
        vyncore::oUTF16StringStream stream;
        stream << u"BuildIOConfiguration(), using numInputs/numOutputs, numInputs=" << inputs << u", numOutputs="
               << outputs;
        return stream.str();
    });
    AddInputBus(BusOfCount(inputs, kInputNames));
    AddOutputBus(BusOfCount(outputs, kOutputNames));
}

// What other threads than the main one want to know of the buses.
void VSTAudioFilter::CountChannels() {
    auto const first = [](Buses const& buses) { return buses.empty() ? 0 : buses.front().GetChannelCount(); };
    mMainInputs.store(first(GetInputBuses()), std::memory_order_relaxed);
    mMainOutputs.store(first(GetOutputBuses()), std::memory_order_relaxed);
    mFilterInputs = GetNumberOfInputChannels();
    mFilterOutputs = GetNumberOfOutputChannels();
}

bool VSTAudioFilter::CanUseSideChaining() const {
    std::pair const channels(GetNumberOfInputChannels(), GetNumberOfOutputChannels());
    return channels == std::pair(2, 1) || channels == std::pair(3, 2) || channels == std::pair(4, 2);
}

} // namespace vynaudiofilterhost::vst
