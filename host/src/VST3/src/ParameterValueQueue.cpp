#include "vynaudiofilterhost/VST3/src/ParameterValueQueue.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::tresult;

ParameterValueQueue::ParameterValueQueue() : ParameterValueQueue(nullptr) {}

ParameterValueQueue::ParameterValueQueue(std::shared_ptr<ParameterPoint> slice)
    : mPoints(ParameterPointAllocator<ParameterPoint>(std::move(slice))) {
    mPoints.reserve(kParameterPointCapacity);
}

void ParameterValueQueue::Assign(Steinberg::Vst::ParamID parameterID) {
    mParameterID = parameterID;
    mPoints.clear();
}

Steinberg::Vst::ParamID PLUGIN_API ParameterValueQueue::getParameterId() {
    return mParameterID;
}

int32 PLUGIN_API ParameterValueQueue::getPointCount() {
    return static_cast<int32>(mPoints.size());
}

tresult PLUGIN_API ParameterValueQueue::getPoint(int32 index, int32& sampleOffset, Steinberg::Vst::ParamValue& value) {
    if (index < 0 || index >= getPointCount())
        return Steinberg::kResultFalse;
    ParameterPoint const& point = mPoints[static_cast<std::size_t>(index)];
    sampleOffset = point.sampleOffset;
    value = point.value;
    return Steinberg::kResultOk;
}

tresult PLUGIN_API ParameterValueQueue::addPoint(int32 sampleOffset, Steinberg::Vst::ParamValue value, int32& index) {
    auto place = FindPlace(sampleOffset);
    if (place != mPoints.end() && place->sampleOffset == sampleOffset) {
        place->value = value;
    } else {
        try {
            place = mPoints.insert(place, {value, sampleOffset});
        } catch (std::exception const&) {
            return Steinberg::kOutOfMemory;
        }
    }
    index = static_cast<int32>(place - mPoints.begin());
    return Steinberg::kResultOk;
}

ParameterValueQueue::Points::iterator ParameterValueQueue::FindPlace(int32 sampleOffset) {
    // Points nearly always come in ascending order, so the last one is looked at before all others.
    if (mPoints.empty() || mPoints.back().sampleOffset < sampleOffset)
        return mPoints.end();
    return std::lower_bound(mPoints.begin(), mPoints.end(), sampleOffset,
                            [](ParameterPoint const& point, int32 offset) { return point.sampleOffset < offset; });
}

} // namespace vynaudiofilterhost::vst3
