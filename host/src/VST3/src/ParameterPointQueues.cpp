#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"

#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>
#include <numeric>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::Vst::ParamID;

namespace {

struct SortedIDs {
    std::vector<ParamID> ids;
    /// Among those that are there for the first time; empty when the list is in this order itself.
    std::vector<std::uint32_t> placesInList;
};

// What is to be numbered in the order of the list has its places there; they become 0, 1, 2, …
void CloseGaps(std::vector<std::uint32_t>& places, std::size_t listSize) {
    std::vector<std::uint32_t> numbers(listSize, 0);
    for (std::uint32_t const place : places)
        numbers[place] = 1;
    std::exclusive_scan(numbers.begin(), numbers.end(), numbers.begin(), std::uint32_t{0});
    for (std::uint32_t& place : places)
        place = numbers[place];
}

// In ascending order, each once, with the first of its places.
SortedIDs SortedByID(std::vector<ParamID> const& list) {
    SortedIDs sorted{list, {}};
    if (std::ranges::adjacent_find(list, std::greater_equal()) == list.end())
        return sorted;
    auto& places = sorted.placesInList;
    places.resize(list.size());
    std::iota(places.begin(), places.end(), 0);
    auto const idAt = [&](std::uint32_t place) { return list[place]; };
    std::ranges::stable_sort(places, {}, idAt);
    auto const isRepeated = [&](std::uint32_t left, std::uint32_t right) { return list[left] == list[right]; };
    places.erase(std::unique(places.begin(), places.end(), isRepeated), places.end());
    sorted.ids.resize(places.size());
    std::ranges::transform(places, sorted.ids.begin(), idAt);
    CloseGaps(places, list.size());
    return sorted;
}

} // namespace

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
    // The rings stay where they are when they can: the plug-in of a filter may be pushing already.
    if (mIDs == other.mIDs && mPlaceInList == other.mPlaceInList) {
        TakeChanged([](ParamID, ParameterPoint const&) {});
    } else {
        std::vector<ParamID> list(other.mIDs.size());
        for (std::size_t ring = 0; ring < other.mIDs.size(); ++ring)
            list[other.PlaceInList(ring)] = other.mIDs[ring];
        SetParameters(list);
    }
    for (std::size_t ring = 0; ring < mIDs.size(); ++ring) {
        other.mRings[ring].ForEach([&](ParameterPoint const& point) {
            mRings[ring].Push(point);
            mChanged.Insert(ring);
        });
    }
    return *this;
}

void ParameterPointQueues::SetParameters(std::vector<ParamID> const& ids) {
    auto [sorted, placesInList] = SortedByID(ids);
    // calloc and not a vector: large blocks come as pages of zeros that cost nothing until they are touched.
    std::unique_ptr<ParameterPointRing[], FreeRings> rings(
        static_cast<ParameterPointRing*>(std::calloc(sorted.size(), sizeof(ParameterPointRing))));
    if (!rings && !sorted.empty())
        throw std::bad_alloc();
    mChanged = AtomicIndexSet(sorted.size());
    mIDs = std::move(sorted);
    mPlaceInList = std::move(placesInList);
    mRings = std::move(rings);
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

bool ParameterPointQueues::DrainChanged(ParameterChanges& changes) {
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
        // Of more points than a ring holds only the newest would stay.
        Steinberg::int32 const count = queue->getPointCount();
        constexpr auto kCapacity = static_cast<Steinberg::int32>(ParameterPointRing::kCapacity);
        for (Steinberg::int32 index = std::max(0, count - kCapacity); index < count; ++index) {
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
    rings.reserve(mIDs.size()); // nothing may fail once the marks are taken
    mChanged.TakeAll([&](std::size_t ring) { rings.push_back(static_cast<std::uint32_t>(ring)); });
    std::sort(rings.begin(), rings.end(),
              [this](std::uint32_t left, std::uint32_t right) { return PlaceInList(left) < PlaceInList(right); });
    return rings;
}

} // namespace vynaudiofilterhost::vst3
