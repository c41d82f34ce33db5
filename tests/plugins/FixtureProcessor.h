#pragma once

#include "plugins/FixtureVendor.h"
#include "plugins/HostLink.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <vector>

namespace vynfixtures {

/// The sound side of a fixture: a gain with as many buses, faults and oddities as its configuration says.
/// A part of a FixtureInstance, which owns it. Keeps the configuration that was set when it was made.
class FixtureProcessor : public IComponent, public IAudioProcessor, public IConnectionPoint {
public:
    static constexpr FixtureObject kObject = FixtureObject::Component;

    void* Find(TUID const id);
    int GetOpenCount() const { return mLink.GetOpenCount(); }

    tresult PLUGIN_API initialize(FUnknown* context) override {
        return mLink.Initialize(context, Fails(FixtureFault::ComponentInitializeFails),
                                ModuleState::Get().snapshot.componentHostAnswers);
    }

    tresult PLUGIN_API terminate() override { return mLink.Terminate(); }

    tresult PLUGIN_API getControllerClassId(TUID classID) override {
        CopyClassID(kControllerClass, 0, classID);
        return Log("getControllerClassId", Fails(FixtureFault::ControllerClassIdFails) ? kNotImplemented : kResultOk);
    }

    tresult PLUGIN_API setIoMode(IoMode mode) override { return Log("setIoMode", kNotImplemented, {mode}); }

    int32 PLUGIN_API getBusCount(MediaType media, BusDirection direction) override {
        int const counts[2][2] = {{mConfiguration.inputCount, mConfiguration.outputCount},
                                  {mConfiguration.eventInputCount, mConfiguration.eventOutputCount}};
        return Log("getBusCount", counts[media != kAudio][direction != kInput], {direction, {media, direction}});
    }

    tresult PLUGIN_API getBusInfo(MediaType media, BusDirection direction, int32 index, BusInfo& info) override;
    tresult PLUGIN_API getRoutingInfo(RoutingInfo&, RoutingInfo&) override {
        return Log("getRoutingInfo", kNotImplemented);
    }

    tresult PLUGIN_API activateBus(MediaType media, BusDirection direction, int32 index, TBool state) override {
        return Log("activateBus", kResultOk, {index, {media, direction}, static_cast<double>(state)});
    }

    tresult PLUGIN_API setActive(TBool state) override;
    tresult PLUGIN_API setState(IBStream* stream) override;
    tresult PLUGIN_API getState(IBStream* stream) override;

    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns, SpeakerArrangement* outputs,
                                          int32 numOuts) override;
    tresult PLUGIN_API getBusArrangement(BusDirection direction, int32 index, SpeakerArrangement& arrangement) override;

    tresult PLUGIN_API canProcessSampleSize(int32 size) override {
        return Log("canProcessSampleSize", size == kSample32 ? kResultTrue : kResultFalse, {size});
    }

    uint32 PLUGIN_API getLatencySamples() override {
        return Log("getLatencySamples", ModuleState::Get().latency.load());
    }

    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override {
        return Log("setupProcessing", kResultOk,
                   {setup.maxSamplesPerBlock, {setup.processMode, setup.symbolicSampleSize}, setup.sampleRate});
    }

    tresult PLUGIN_API setProcessing(TBool state) override { return Log("setProcessing", kResultOk, {state}); }
    tresult PLUGIN_API process(ProcessData& data) override;
    uint32 PLUGIN_API getTailSamples() override { return Log("getTailSamples", mConfiguration.tail); }

    tresult PLUGIN_API connect(IConnectionPoint* other) override { return mLink.Connect(other); }
    tresult PLUGIN_API disconnect(IConnectionPoint* other) override { return mLink.Disconnect(other); }
    tresult PLUGIN_API notify(IMessage* message) override { return mLink.Notify(message); }

private:
    template <class Result>
    static Result Log(char const* name, Result result, CallFacts const& facts = {}) {
        Record(kObject, name, facts);
        return result;
    }

    bool Fails(FixtureFault fault) const { return mConfiguration.Fails(fault); }
    FixtureBus* BusAt(BusDirection direction, int32 index);

    void ReadChanges(IParameterChanges* changes);
    void FailIfTold() const;
    void WriteOutputs(ProcessData& data) const;
    void Render(ProcessData& data);
    void RenderChannel(float const* in, float* out, int32 count, std::size_t channel);

    FixtureConfiguration mConfiguration = ModuleState::Get().configuration;
    HostLink mLink{kObject};
    VendorComponent mVendorComponent{*static_cast<IComponent*>(this), mConfiguration};
    VendorProcessor mVendorProcessor{*static_cast<IComponent*>(this), mConfiguration};
    std::atomic<double> mGain{mConfiguration.DefaultValue(0)};
    int mProcessCalls = 0;
    std::vector<float> mDelayLines; ///< of every output channel in turn, mDelay samples each
    std::size_t mDelay = 0;
    std::size_t mDelayPosition = 0;
};

} // namespace vynfixtures
