#pragma once

#include "vynaudiofilterhost/VST3/src/AtomicIndexSet.h"
#include "vynaudiofilterhost/VST3/src/ParameterPointRing.h"

#include "pluginterfaces/vst/vsttypes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vynaudiofilterhost::vst3 {

class ParameterChanges;

/// The values of parameters on their way between the threads, a ring of 100 points for each parameter.
///
/// A filter has two: values for the plug-in's processor, pushed by whoever sets one and drained ahead of each block,
/// and values that the processor reports, collected behind each block and drained by the main thread's tick.
///
/// The parameters are fixed by SetParameters, before any thread uses the rings. Draining costs what was pushed and not
/// what exists. The rings lie in one block of zeroed memory; what no point has reached is not resident.
///
/// Thread safety: PushPoint and CollectFromParameterChanges from any thread at once; PopPoint, TakeChanged and
/// DrainToParameterChanges from one thread at a time. Nobody waits, nothing allocates. Copying reads the source as
/// PopPoint would and takes nothing from it.
class ParameterPointQueues {
public:
    ParameterPointQueues();
    ParameterPointQueues(ParameterPointQueues const& other);
    ParameterPointQueues& operator=(ParameterPointQueues const& other);
    ~ParameterPointQueues();

    /// Makes an empty ring for each ID, in place of all that was there. Throws std::bad_alloc.
    /// @param ids  in the order of the controller's list; an ID that stands there twice has one ring
    /// [main-thread & suspended]
    void SetParameters(std::vector<Steinberg::Vst::ParamID> const& ids);

    /// Adds a point behind all others of its parameter; when the ring is full the oldest goes. An unknown ID is
    /// ignored. [any-thread]
    void PushPoint(Steinberg::Vst::ParamID id, double value, std::int32_t sampleOffset) noexcept;

    /// Takes the oldest point of a parameter. False when there is none, or the ID is unknown.
    /// [process-thread | main-thread]
    bool PopPoint(Steinberg::Vst::ParamID id, double& value, std::int32_t& sampleOffset) noexcept;

    /// Moves all points into changes, parameters in ascending order of their IDs. True when any point moved.
    /// [process-thread | main-thread & suspended]
    bool DrainToParameterChanges(ParameterChanges& changes) { return !mChanged.IsEmpty() && DrainChanged(changes); }

    /// Pushes all points of changes. True when any point moved.
    /// [process-thread | main-thread & suspended]
    bool CollectFromParameterChanges(ParameterChanges& changes);

    /// Takes all points and hands them to visit(id, point), parameters in the order of SetParameters. Allocates.
    /// [main-thread]
    template <class Visitor>
    void TakeChanged(Visitor&& visit) {
        if (mChanged.IsEmpty())
            return;
        std::vector<std::uint32_t> const rings = ChangedInListOrder();
        try {
            for (std::uint32_t const ring : rings)
                TakePoints(ring, [&](ParameterPoint const& point) { visit(mIDs[ring], point); });
        } catch (...) {
            // What a plug-in threw in the middle of must not keep the rest from the next time.
            for (std::uint32_t const ring : rings)
                mChanged.Insert(ring);
            throw;
        }
    }

private:
    static constexpr std::size_t kNoRing = static_cast<std::size_t>(-1);

    struct FreeRings {
        void operator()(ParameterPointRing* rings) const noexcept;
    };

    bool DrainChanged(ParameterChanges& changes);
    std::size_t FindRing(Steinberg::Vst::ParamID id) const noexcept;
    std::size_t PlaceInList(std::size_t ring) const noexcept {
        return mPlaceInList.empty() ? ring : mPlaceInList[ring];
    }
    std::vector<std::uint32_t> ChangedInListOrder();

    template <class Visitor>
    void TakePoints(std::size_t ring, Visitor&& visit) {
        ParameterPoint point;
        std::size_t taken = 0;
        for (; taken < ParameterPointRing::kCapacity && mRings[ring].Pop(point); ++taken)
            visit(point);
        // A writer that never stops must not keep the reader: what came meanwhile is for the next drain.
        if (taken == ParameterPointRing::kCapacity)
            mChanged.Insert(ring);
    }

    std::vector<Steinberg::Vst::ParamID> mIDs; ///< ascending; a place here is the number of a ring
    std::vector<std::uint32_t> mPlaceInList;   ///< of each ring's parameter; empty when that is the order of the rings
    std::unique_ptr<ParameterPointRing[], FreeRings> mRings;
    AtomicIndexSet mChanged; ///< rings that may hold points
};

} // namespace vynaudiofilterhost::vst3
