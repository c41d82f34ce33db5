#pragma once

#include "plugins/FixtureVendor.h"
#include "plugins/FixtureView.h"
#include "plugins/HostLink.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstunits.h"

#include <unordered_map>
#include <vector>

namespace vynfixtures {

/// The parameter side of a fixture: as many parameters, units and programs as its configuration says.
/// A part of a FixtureInstance, which owns it. Keeps the configuration that was set when it was made.
class FixtureController : public IEditController, public IUnitInfo, public IMidiMapping, public IConnectionPoint {
public:
    static constexpr FixtureObject kObject = FixtureObject::Controller;

    FixtureController();

    void* Find(TUID const id);
    int GetOpenCount() const { return mLink.GetOpenCount(); }

    /// FixtureExports::callHost, over the controller that was made last.
    static int CallHost(FixtureHostCall call, unsigned id, double value);

    tresult PLUGIN_API initialize(FUnknown* context) override {
        return mLink.Initialize(context, Fails(FixtureFault::ControllerInitializeFails),
                                ModuleState::Get().snapshot.controllerHostAnswers);
    }

    tresult PLUGIN_API terminate() override { return mLink.Terminate(); }
    tresult PLUGIN_API setComponentState(IBStream* stream) override;
    tresult PLUGIN_API setState(IBStream* stream) override;
    tresult PLUGIN_API getState(IBStream* stream) override;

    int32 PLUGIN_API getParameterCount() override { return Log("getParameterCount", mConfiguration.parameterCount); }
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) override;
    tresult PLUGIN_API getParamStringByValue(ParamID id, ParamValue value, TChar* text) override;

    tresult PLUGIN_API getParamValueByString(ParamID id, TChar*, ParamValue&) override {
        return Log("getParamValueByString", kNotImplemented, {id});
    }

    ParamValue PLUGIN_API normalizedParamToPlain(ParamID id, ParamValue value) override {
        return Log("normalizedParamToPlain", ToPlain(value), {id, {}, value});
    }

    ParamValue PLUGIN_API plainParamToNormalized(ParamID id, ParamValue plain) override {
        double const range = mConfiguration.plainHigh - mConfiguration.plainLow;
        return Log("plainParamToNormalized", (plain - mConfiguration.plainLow) / range, {id, {}, plain});
    }

    ParamValue PLUGIN_API getParamNormalized(ParamID id) override {
        double* const kept = ValueOf(id);
        double const result = kept != nullptr ? std::atomic_ref(*kept).load() : 0.0;
        return Log("getParamNormalized", result, {id, {}, result});
    }

    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override {
        double* const kept = ValueOf(id);
        if (kept != nullptr)
            std::atomic_ref(*kept).store(value);
        return Log("setParamNormalized", kept != nullptr ? kResultOk : kInvalidArgument, {id, {}, value});
    }

    tresult PLUGIN_API setComponentHandler(IComponentHandler* handler) override {
        mHandler = handler;
        return Log("setComponentHandler", kResultOk, {handler != nullptr});
    }

    IPlugView* PLUGIN_API createView(FIDString name) override {
        Record(kObject, "createView", {.detail = name});
        return mConfiguration.view.present ? new FixtureView(mConfiguration.view) : nullptr;
    }

    int32 PLUGIN_API getUnitCount() override { return Log("getUnitCount", mConfiguration.unitCount); }
    tresult PLUGIN_API getUnitInfo(int32 index, UnitInfo& info) override;
    int32 PLUGIN_API getProgramListCount() override {
        return Log("getProgramListCount", mConfiguration.programListCount);
    }
    tresult PLUGIN_API getProgramListInfo(int32 index, ProgramListInfo& info) override;
    tresult PLUGIN_API getProgramName(ProgramListID list, int32 program, TChar* name) override;
    tresult PLUGIN_API getProgramInfo(ProgramListID, int32, char const*, TChar*) override { return kNotImplemented; }
    tresult PLUGIN_API hasProgramPitchNames(ProgramListID, int32) override { return kNotImplemented; }
    tresult PLUGIN_API getProgramPitchName(ProgramListID, int32, int16, TChar*) override { return kNotImplemented; }
    UnitID PLUGIN_API getSelectedUnit() override { return kRootUnitId; }
    tresult PLUGIN_API selectUnit(UnitID) override { return kNotImplemented; }
    tresult PLUGIN_API getUnitByBus(MediaType, BusDirection, int32, int32, UnitID&) override { return kNotImplemented; }
    tresult PLUGIN_API setUnitProgramData(int32, int32, IBStream*) override { return kNotImplemented; }

    tresult PLUGIN_API getMidiControllerAssignment(int32 bus, int16 channel, CtrlNumber number, ParamID& id) override;

    tresult PLUGIN_API connect(IConnectionPoint* other) override { return mLink.Connect(other); }
    tresult PLUGIN_API disconnect(IConnectionPoint* other) override { return mLink.Disconnect(other); }
    tresult PLUGIN_API notify(IMessage* message) override { return mLink.Notify(message); }

protected:
    ~FixtureController();

private:
    template <class Result>
    static Result Log(char const* name, Result result, CallFacts const& facts = {}) {
        Record(kObject, name, facts);
        return result;
    }

    bool Fails(FixtureFault fault) const { return mConfiguration.Fails(fault); }

    double ToPlain(double value) const {
        return mConfiguration.plainLow + value * (mConfiguration.plainHigh - mConfiguration.plainLow);
    }

    /// Where a value is kept, or null. The host sets values on several threads: only through an atomic_ref.
    double* ValueOf(ParamID id);
    void Fill(String128& field, std::u16string_view text) const {
        FillText<TChar>(field, text, Fails(FixtureFault::UnterminatedTexts));
    }

    FixtureConfiguration const mConfiguration = ModuleState::Get().configuration;
    HostLink mLink{kObject};
    VendorController mVendorController{*static_cast<IEditController*>(this), mConfiguration};
    IPtr<IComponentHandler> mHandler;
    std::vector<double> mValues;                        ///< of the ordinary parameters, by index
    std::unordered_map<ParamID, double> mSpecialValues; ///< of the special ones; its keys never change
};

} // namespace vynfixtures
