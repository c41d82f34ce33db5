#include "plugins/FixtureProcessor.h"

#include "plugins/StateBlob.h"

#include <bit>

namespace vynfixtures {

void* FixtureProcessor::Find(TUID const id) {
    if (SameID(id, FUnknown_iid) || SameID(id, IPluginBase_iid) || SameID(id, IComponent_iid))
        return static_cast<IComponent*>(this);
    if (SameID(id, IAudioProcessor_iid) && !Fails(FixtureFault::NoAudioProcessor))
        return static_cast<IAudioProcessor*>(this);
    if (SameID(id, IConnectionPoint_iid))
        return static_cast<IConnectionPoint*>(this);
    if (SameID(id, kVendorComponentID) && mConfiguration.vendorInterfaces)
        return &mVendorComponent;
    if (SameID(id, kVendorProcessorID) && mConfiguration.vendorInterfaces)
        return &mVendorProcessor;
    return nullptr;
}

FixtureBus* FixtureProcessor::BusAt(BusDirection direction, int32 index) {
    int const count = direction == kInput ? mConfiguration.inputCount : mConfiguration.outputCount;
    if (index < 0 || index >= std::min(count, kFixtureMaxBuses))
        return nullptr;
    return &(direction == kInput ? mConfiguration.inputs : mConfiguration.outputs)[index];
}

tresult FixtureProcessor::getBusInfo(MediaType media, BusDirection direction, int32 index, BusInfo& info) {
    FixtureBus const events = FixtureBus::Make(0xFFFF, u"Events");
    FixtureBus const* const bus = media == kAudio ? BusAt(direction, index) : &events;
    Record(kObject, "getBusInfo", {index, {media, direction}});
    if (bus == nullptr || bus->infoFails)
        return kInvalidArgument;
    info.mediaType = media;
    info.direction = direction;
    info.channelCount = std::popcount(bus->arrangement);
    info.busType = bus->type;
    info.flags = bus->flags;
    FillText<TChar>(info.name, bus->name, Fails(FixtureFault::UnterminatedTexts));
    return kResultOk;
}

tresult FixtureProcessor::setActive(TBool state) {
    Record(kObject, "setActive", {state});
    mProcessCalls = 0;
    mDelay = mConfiguration.delayAudio ? ModuleState::Get().latency.load() : 0;
    mDelayPosition = 0;
    mDelayLines.assign(state != 0 ? mDelay * kFixtureMaxChannels : 0, 0.0F);
    return kResultOk;
}

tresult FixtureProcessor::setState(IBStream* stream) {
    FixtureBlob const state = ModuleState::Get().snapshot.componentState = ReadBlob(*stream);
    if (mConfiguration.stateHoldsGain)
        mGain = GainOfBlob(state, mGain);
    return Log("setState", Fails(FixtureFault::SetStateFails) ? kInternalError : kResultOk, {state.size});
}

tresult FixtureProcessor::getState(IBStream* stream) {
    int const size =
        WriteBlob(*stream, mConfiguration.stateHoldsGain ? BlobOfGain(mGain) : mConfiguration.componentState);
    return Log("getState", Fails(FixtureFault::ComponentGetStateFails) ? kInternalError : kResultOk, {size});
}

tresult FixtureProcessor::setBusArrangements(SpeakerArrangement* inputs, int32 numIns, SpeakerArrangement* outputs,
                                             int32 numOuts) {
    using enum FixtureBusAnswer;
    Record(kObject, "setBusArrangements", {numIns, {numOuts}});
    FixtureBusAnswer const answer = mConfiguration.busAnswer;
    SpeakerArrangement const forced = answer == MonoOnly ? 0x80000 : answer == StereoOnly ? 3 : 0;
    bool const symmetric = numIns > 0 && numOuts > 0 && inputs[0] == outputs[0];
    bool const agreed = forced != 0               ? symmetric && inputs[0] == forced
                        : answer == SymmetricOnly ? symmetric
                                                  : answer != Refuse;
    auto const settle = [&](SpeakerArrangement const* wanted, int32 count, auto& requested, FixtureBus* buses) {
        for (int i = 0; i < kFixtureMaxBuses; ++i) {
            requested[i] = i < count ? wanted[i] : 0;
            if (forced != 0 || (i < count && agreed && answer != AcceptNothing))
                buses[i].arrangement = forced != 0 ? forced : wanted[i];
        }
    };
    settle(inputs, numIns, ModuleState::Get().snapshot.requestedInputs, mConfiguration.inputs);
    settle(outputs, numOuts, ModuleState::Get().snapshot.requestedOutputs, mConfiguration.outputs);
    return agreed ? kResultTrue : kResultFalse;
}

tresult FixtureProcessor::getBusArrangement(BusDirection direction, int32 index, SpeakerArrangement& arrangement) {
    Record(kObject, "getBusArrangement", {index, {direction}});
    FixtureBus const* const bus = BusAt(direction, index);
    if (bus == nullptr || bus->arrangementFails)
        return kInvalidArgument;
    arrangement = bus->arrangement;
    return kResultOk;
}

} // namespace vynfixtures
