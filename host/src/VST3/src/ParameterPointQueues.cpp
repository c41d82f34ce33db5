#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"

#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <new>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::Vst::ParamID;

void ParameterPointQueues::FreeRings::operator()(ParameterPointRing* rings) const noexcept {
    std::free(rings);
}

ParameterPointQueues::ParameterPointQueues() = default;

ParameterPointQueues::~ParameterPointQueues() = default;

ParameterPointQueues::ParameterPointQueues(ParameterPointQueues const& other) {
    *this = other;
}

ParameterPointQueues& ParameterPointQueues::operator=(ParameterPointQueues const& other) {
    if (this == &other)
        return *this;
    std::vector<ParamID> list(other.mIDs.size());
    for (std::size_t ring = 0; ring < other.mIDs.size(); ++ring)
        list[other.mPlaceInList[ring]] = other.mIDs[ring];
    SetParameters(list);
    for (std::size_t ring = 0; ring < mIDs.size(); ++ring) {
        other.mRings[ring].ForEach([&](ParameterPoint const& point) {
            mRings[ring].Push(point);
            mChanged.Insert(ring);
        });
    }
    return *this;
}

void ParameterPointQueues::SetParameters(std::vector<ParamID> const& ids) {
    std::map<ParamID, std::uint32_t> places;
    for (ParamID const id : ids)
        places.emplace(id, static_cast<std::uint32_t>(places.size()));

    mIDs.clear();
    mPlaceInList.clear();
    for (auto const& [id, place] : places) {
        mIDs.push_back(id);
        mPlaceInList.push_back(place);
    }
    // calloc and not a vector: large blocks come as pages of zeros that cost nothing until they are touched.
    mRings.reset(static_cast<ParameterPointRing*>(std::calloc(mIDs.size(), sizeof(ParameterPointRing))));
    if (!mRings && !mIDs.empty())
        throw std::bad_alloc();
    mChanged = AtomicIndexSet(mIDs.size());
}

void ParameterPointQueues::PushPoint(ParamID id, double value, std::int32_t sampleOffset) noexcept {
    std::size_t const ring = FindRing(id);
    if (ring == kNoRing)
        return;
    mRings[ring].Push({value, sampleOffset});
    mChanged.Insert(ring);
}

bool ParameterPointQueues::PopPoint(ParamID id, double& value, std::int32_t& sampleOffset) noexcept {
    std::size_t const ring = FindRing(id);
    ParameterPoint point;
    if (ring == kNoRing || !mRings[ring].Pop(point))
        return false;
    value = point.value;
    sampleOffset = point.sampleOffset;
    return true;
}

bool ParameterPointQueues::DrainToParameterChanges(ParameterChanges& changes) {
    bool moved = false;
    mChanged.TakeAll([&](std::size_t ring) {
        Steinberg::Vst::IParamValueQueue* queue = nullptr;
        TakePoints(ring, [&](ParameterPoint const& point) {
            Steinberg::int32 index = 0;
            if (!queue)
                queue = changes.addParameterData(mIDs[ring], index);
            if (queue)
                queue->addPoint(point.sampleOffset, point.value, index);
            moved = true;
        });
    });
    return moved;
}

bool ParameterPointQueues::CollectFromParameterChanges(ParameterChanges& changes) {
    bool moved = false;
    for (Steinberg::int32 place = 0; place < changes.getParameterCount(); ++place) {
        auto* const queue = changes.getParameterData(place);
        ParamID const id = queue->getParameterId();
        for (Steinberg::int32 index = 0; index < queue->getPointCount(); ++index) {
            Steinberg::int32 sampleOffset = 0;
            Steinberg::Vst::ParamValue value = 0.0;
            if (queue->getPoint(index, sampleOffset, value) != Steinberg::kResultOk)
                continue;
            PushPoint(id, value, sampleOffset);
            moved = true;
        }
    }
    return moved;
}

std::size_t ParameterPointQueues::FindRing(ParamID id) const noexcept {
    // Most plug-ins number their parameters from 0 without a gap.
    if (id < mIDs.size() && mIDs[id] == id)
        return id;
    auto const found = std::lower_bound(mIDs.begin(), mIDs.end(), id);
    return found != mIDs.end() && *found == id ? static_cast<std::size_t>(found - mIDs.begin()) : kNoRing;
}

std::vector<std::uint32_t> ParameterPointQueues::ChangedInListOrder() {
    std::vector<std::uint32_t> rings;
    mChanged.TakeAll([&](std::size_t ring) { rings.push_back(static_cast<std::uint32_t>(ring)); });
    std::sort(rings.begin(), rings.end(),
              [this](std::uint32_t left, std::uint32_t right) { return mPlaceInList[left] < mPlaceInList[right]; });
    return rings;
}

} // namespace vynaudiofilterhost::vst3
