#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vyncore/debug/Trace.h"

#include <cmath>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::tresult;
using Steinberg::Vst::ParameterInfo;
using Steinberg::Vst::ParamID;
using Steinberg::Vst::ParamValue;

void VST3AudioFilter::BuildParameterList() {
    if (!mController)
        return;
    int32 const count = PlausibleCount(mController->getParameterCount(), kMaxParameters);
    mParameters.Reserve(static_cast<std::size_t>(count));
    for (int32 index = 0; index < count; ++index)
        ListParameter(index, ReadParameterInfo(*mController, index));
    mParameters.Finish();
    mInputPoints.SetParameters(mParameters.GetIDs());
    mOutputPoints.SetParameters(mParameters.GetIDs());
    mInputChanges.SetMaxParameters(count);
    mOutputChanges.SetMaxParameters(count);
    mParametersListed.store(true, std::memory_order_release);
}

void VST3AudioFilter::ListParameter(std::int32_t index, ParameterInfo const& info) {
    constexpr int32 kNotShown = ParameterInfo::kIsBypass | ParameterInfo::kIsProgramChange | ParameterInfo::kIsReadOnly;
    mParameters.Add(info.id);
    bool const isProgramChange = (info.flags & ParameterInfo::kIsProgramChange) != 0;
    if (isProgramChange && info.unitId == Steinberg::Vst::kRootUnitId &&
        mProgramChangeParameterID == kNoProgramChange) {
        mProgramChangeParameterID = info.id;
        mProgramChangeParameterIndex = index;
    }
    if ((info.flags & kNotShown) == 0)
        mParameters.Show(index, info);
}

std::int32_t VST3AudioFilter::FindParameterIndex(ParamID id) const {
    // A plug-in has the handler before its parameters are listed, and may call it on a thread of its own.
    return mParametersListed.load(std::memory_order_acquire) ? mParameters.FindIndex(id) : -1;
}

int VST3AudioFilter::GetParameterCount() const {
    return mParameters.GetCount();
}

void VST3AudioFilter::SetParameter(int index, float value) {
    AudioFilter::SetParameter(index, value);
    // Few plug-ins are made for what is no number.
    if (index < 0 || index >= GetParameterCount() || !std::isfinite(value))
        return;
    ParamID const id = mParameters.GetID(index);
    mController->setParamNormalized(id, value);
    mInputPoints.PushPoint(id, value, 0);
}

float VST3AudioFilter::GetParameter(int index) const {
    if (!mController || index < 0 || index >= GetParameterCount())
        return 0.0f;
    ParamID const id = mParameters.GetID(index);
    return static_cast<float>(mController->getParamNormalized(id));
}

boost::intrusive_ptr<AudioFilterParameterInfo> VST3AudioFilter::GetParameterInfo(int index) {
    if (index < 0 || index >= GetParameterCount())
        return nullptr;
    return &mParameters.GetInfo(index, *mController);
}

AudioFilter::UString VST3AudioFilter::GetParameterString(int index) {
    if (!mController || index < 0 || index >= GetParameterCount())
        return UString();
    return mParameters.GetInfo(index, *mController).GetParameterString(GetParameter(index));
}

void VST3AudioFilter::OnUITimerTick() {
    AudioFilter::OnUITimerTick();
    if (mController)
        mOutputPoints.TakeChanged(
            [this](ParamID id, ParameterPoint const& point) { mController->setParamNormalized(id, point.value); });
}

tresult VST3AudioFilter::beginEdit(ParamID id) {
    if (int const index = FindParameterIndex(id); index >= 0)
        BeginEditing(index);
    return kResultOk;
}

tresult VST3AudioFilter::performEdit(ParamID id, ParamValue value) {
    if (!std::isfinite(value))
        return kResultOk;
    if (!mParametersListed.load(std::memory_order_acquire)) {
        SendEditToController(id, value);
        return kResultOk;
    }
    if (int const index = FindParameterIndex(id); index >= 0)
        GetAutomatedParameterChangeSignal()(index, static_cast<float>(value));
    mInputPoints.PushPoint(id, value, 0);
    SendEditToController(id, value);
    return kResultOk;
}

void VST3AudioFilter::SendEditToController(ParamID id, ParamValue value) {
    // A controller that reports an edit whenever it is set, and never holds what it was given, would go on for ever.
    constexpr int kMaxDepth = 32;
    thread_local int depth = 0;
    struct Deeper {
        Deeper() { ++depth; }
        ~Deeper() { --depth; }
    } const deeper;
    if (mController && depth <= kMaxDepth && mController->getParamNormalized(id) != value)
        mController->setParamNormalized(id, value);
}

tresult VST3AudioFilter::endEdit(ParamID id) {
    if (int const index = FindParameterIndex(id); index >= 0)
        EndEditing(index);
    return kResultOk;
}

tresult VST3AudioFilter::restartComponent(int32 flags) {
    constexpr int32 kLatency = Steinberg::Vst::kReloadComponent | Steinberg::Vst::kLatencyChanged;
    constexpr int32 kProperties = Steinberg::Vst::kParamValuesChanged | Steinberg::Vst::kParamTitlesChanged;
    if (!CurrentThreadIDIsMainThreadID()) {
        vyncore::debug::Trace(0, "VST3AudioFilter", "VST3: restartComponent() called from non-main thread");
        return kResultFalse;
    }
    if (IsBeingDestroyed())
        return kResultFalse;
    // A plug-in may ask while the list is still being made; what it holds by then has just been read.
    if ((flags & Steinberg::Vst::kParamTitlesChanged) != 0 && mParametersListed.load(std::memory_order_acquire))
        mParameters.ReadTitles(*mController);
    if ((flags & kLatency) != 0 && mProcessor) {
        mLatency = ReadLatency();
        SendLatencyChanged();
    }
    if ((flags & kProperties) != 0)
        GetParameterPropertiesChangedSignal()();
    return (flags & (kLatency | kProperties)) != 0 ? kResultOk : kResultFalse;
}

} // namespace vynaudiofilterhost::vst3
