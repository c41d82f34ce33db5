#include "vynaudiofilterhost/VST3/src/ParameterValueQueue.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <new>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::tresult;

namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);

constexpr std::size_t Aligned(std::size_t bytes) {
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

constexpr std::size_t kQueueBytes = Aligned(sizeof(ParameterValueQueue));

} // namespace

std::size_t const ParameterValueQueue::kBytes = kQueueBytes + Aligned(kParameterPointCapacity * sizeof(ParameterPoint));

ParameterValueQueue::ParameterValueQueue() : HostObject(Life::kOwned) {
    mPoints.reserve(kParameterPointCapacity);
}

ParameterValueQueue::ParameterValueQueue(std::shared_ptr<std::byte[]> block, ParameterPoint* slice)
    : HostObject(Life::kOwned), mBlock(std::move(block)), mPoints(ParameterPointAllocator<ParameterPoint>(slice)) {
    mPoints.reserve(kParameterPointCapacity);
}

ParameterValueQueue* ParameterValueQueue::MakeIn(std::shared_ptr<std::byte[]> const& block, std::byte* place) noexcept {
    auto* const points = reinterpret_cast<ParameterPoint*>(place + kQueueBytes);
    return new (place) ParameterValueQueue(block, points);
}

void ParameterValueQueue::Destroy() {
    if (!mBlock) {
        HostObject::Destroy();
        return;
    }
    // The block outlives the queue in it by this.
    std::shared_ptr<std::byte[]> const block = mBlock;
    this->~ParameterValueQueue();
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
