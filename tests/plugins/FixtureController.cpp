#include "plugins/FixtureController.h"

#include "plugins/StateBlob.h"

#include <cstdio>

namespace vynfixtures {
namespace {

// An absurd parameter count must not cost the fixture its memory; beyond this a parameter keeps no value.
constexpr int kMaxKeptValues = 1 << 17;

FixtureController* lastController = nullptr;

std::u16string Numbered(std::string const& text, int number) {
    return Widen(text + ' ' + std::to_string(number));
}

} // namespace

FixtureController::FixtureController()
    : mValues(static_cast<std::size_t>(std::clamp(mConfiguration.parameterCount, 0, kMaxKeptValues)), 0.5) {
    for (int i = 0; i < mConfiguration.specialCount; ++i)
        mSpecialValues.emplace(mConfiguration.special[i].id, mConfiguration.special[i].defaultValue);
    lastController = this;
}

FixtureController::~FixtureController() {
    if (lastController == this)
        lastController = nullptr;
}

void* FixtureController::Find(TUID const id) {
    if (SameID(id, FUnknown_iid) || SameID(id, IPluginBase_iid) || SameID(id, IEditController_iid))
        return static_cast<IEditController*>(this);
    if (SameID(id, IUnitInfo_iid) && mConfiguration.unitInfo)
        return static_cast<IUnitInfo*>(this);
    if (SameID(id, IMidiMapping_iid) && mConfiguration.midiMapping)
        return static_cast<IMidiMapping*>(this);
    if (SameID(id, IConnectionPoint_iid))
        return static_cast<IConnectionPoint*>(this);
    if (SameID(id, kVendorControllerID) && mConfiguration.vendorInterfaces)
        return &mVendorController;
    return nullptr;
}

int FixtureController::CallHost(FixtureHostCall call, unsigned id, double value) {
    using enum FixtureHostCall;
    IComponentHandler* const handler = lastController != nullptr ? lastController->mHandler.get() : nullptr;
    if (handler == nullptr)
        return kFixtureNoHost;
    if (call == BeginEdit)
        return handler->beginEdit(id);
    if (call == PerformEdit)
        return handler->performEdit(id, value);
    if (call == EndEdit)
        return handler->endEdit(id);
    if (call == RestartComponent)
        return handler->restartComponent(static_cast<int32>(id));
    return lastController->mLink.SendMessage(id);
}

tresult FixtureController::setComponentState(IBStream* stream) {
    FixtureBlob const state = ModuleState::Get().snapshot.controllerComponentState = ReadBlob(*stream);
    if (double* const gain = ValueOf(0); gain != nullptr && mConfiguration.stateHoldsGain)
        std::atomic_ref(*gain).store(GainOfBlob(state, *gain));
    return Log("setComponentState", Fails(FixtureFault::SetStateFails) ? kInternalError : kResultOk, {state.size});
}

tresult FixtureController::setState(IBStream* stream) {
    FixtureBlob const state = ModuleState::Get().snapshot.controllerState = ReadBlob(*stream);
    return Log("setState", Fails(FixtureFault::SetStateFails) ? kInternalError : kResultOk, {state.size});
}

tresult FixtureController::getState(IBStream* stream) {
    int const size = WriteBlob(*stream, mConfiguration.controllerState);
    return Log("getState", Fails(FixtureFault::ControllerGetStateFails) ? kInternalError : kResultOk, {size});
}

double* FixtureController::ValueOf(ParamID id) {
    if (auto const found = mSpecialValues.find(id); found != mSpecialValues.end())
        return &found->second;
    return id < mValues.size() ? &mValues[id] : nullptr;
}

tresult FixtureController::getParameterInfo(int32 index, ParameterInfo& info) {
    Record(kObject, "getParameterInfo", {index});
    if (index < 0 || index >= mConfiguration.parameterCount)
        return kInvalidArgument;
    FixtureParameter ordinary{.index = index, .id = static_cast<ParamID>(index)};
    auto const specialEnd = mConfiguration.special + mConfiguration.specialCount;
    auto const special = std::find_if(mConfiguration.special, specialEnd, [&](auto& p) { return p.index == index; });
    if (special == specialEnd)
        SetFixtureText<TChar>(ordinary.title, Numbered("Parameter", index));
    FixtureParameter const& parameter = special == specialEnd ? ordinary : *special;
    info.id = parameter.id;
    info.stepCount = parameter.stepCount;
    info.defaultNormalizedValue = parameter.defaultValue;
    info.unitId = parameter.unit;
    info.flags = parameter.flags;
    Fill(info.title, parameter.title);
    Fill(info.units, parameter.units);
    return kResultOk;
}

tresult FixtureController::getParamStringByValue(ParamID id, ParamValue value, TChar* text) {
    char digits[64];
    std::snprintf(digits, sizeof digits, "%.2f", ToPlain(value));
    Fill(*reinterpret_cast<String128*>(text), Widen(digits));
    return Log("getParamStringByValue", kResultOk, {id, {}, value});
}

tresult FixtureController::getUnitInfo(int32 index, UnitInfo& info) {
    Record(kObject, "getUnitInfo", {index});
    if (index < 0 || index >= mConfiguration.unitCount)
        return kInvalidArgument;
    bool const root = index == mConfiguration.rootUnitIndex;
    info.id = root ? kRootUnitId : 100 + index;
    info.parentUnitId = root ? kNoParentUnitId : kRootUnitId;
    info.programListId = root ? mConfiguration.rootProgramListId : kNoProgramListId;
    Fill(info.name, Numbered("Unit", index));
    return kResultOk;
}

tresult FixtureController::getProgramListInfo(int32 index, ProgramListInfo& info) {
    Record(kObject, "getProgramListInfo", {index});
    if (index < 0 || index >= std::min(mConfiguration.programListCount, kFixtureMaxLists))
        return kInvalidArgument;
    info.id = index;
    info.programCount = mConfiguration.programCounts[index];
    Fill(info.name, Numbered("List", index));
    return kResultOk;
}

tresult FixtureController::getProgramName(ProgramListID list, int32 program, TChar* name) {
    Record(kObject, "getProgramName", {program, {list}});
    bool const known = list >= 0 && list < std::min(mConfiguration.programListCount, kFixtureMaxLists) &&
                       program >= 0 && program < mConfiguration.programCounts[list];
    if (!known || Fails(FixtureFault::ProgramNameFails))
        return kInvalidArgument;
    Fill(*reinterpret_cast<String128*>(name), Numbered("List " + std::to_string(list) + " Program", program));
    return kResultOk;
}

tresult FixtureController::getMidiControllerAssignment(int32 bus, int16 channel, CtrlNumber number, ParamID& id) {
    Record(kObject, "getMidiControllerAssignment", {number, {channel, bus}});
    for (FixtureMidiAssignment const& assignment : mConfiguration.midiAssignments) {
        if (assignment.controller != number)
            continue;
        id = assignment.id;
        return kResultOk;
    }
    return kResultFalse;
}

} // namespace vynfixtures
