#pragma once

#include "vynaudiofilterhost/VST3/src/HostObject.h"
#include "vynaudiofilterhost/VST3/src/ParameterQueueIndex.h"
#include "vynaudiofilterhost/VST3/src/ParameterValueQueue.h"

#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The parameter changes of one block, a queue per parameter that changes. A filter owns two as members, one that a
/// plug-in reads and one that it writes. It never shrinks or grows on the process path as long as no more parameters
/// change than SetMaxParameters made room for.
///
/// Life cycle: SetMaxParameters once the parameters are known; then, block by block, addParameterData by one side, the
/// getters by the other, and Clear. A queue is made when it is first used, in memory that SetMaxParameters has set
/// aside: parameters that never change cost nothing but addresses.
/// Invariants: 1. the pool owns each queue; 2. its first getParameterCount() queues are in use, each
/// for another parameter, in the order in which they were added; 3. the index knows exactly those, and has room for
/// the whole pool, those not made yet included.
class ParameterChanges final : public HostObject<Steinberg::Vst::IParameterChanges> {
public:
    /// Without queues. A part of another object says so.
    /// [any-thread]
    explicit ParameterChanges(Life life = Life::kCounted) noexcept : HostObject(life) {}

    /// Gives the pool's reference on each queue back.
    /// [main-thread & suspended]
    ~ParameterChanges() override;

    /// Makes room for `count` queues in the pool, or releases the surplus, those in use as well. Nothing for a negative
    /// count. Throws std::bad_alloc when there is no memory for that many.
    /// [main-thread & suspended]
    void SetMaxParameters(int count);

    /// Takes all queues out of use; the pool stays.
    /// [process-thread | main-thread & suspended]
    void Clear() noexcept {
        if (mUsedCount != 0)
            ClearQueues();
    }

    /// Whether no queue is in use.
    /// [process-thread | main-thread & suspended]
    bool IsEmpty() const noexcept { return mUsedCount == 0; }

    /// The number of queues in use.
    /// [process-thread | main-thread & suspended]
    Steinberg::int32 PLUGIN_API getParameterCount() override;

    /// The queue in use at `index`, null when there is none. The reference stays the pool's.
    /// [process-thread | main-thread & suspended]
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;

    /// The queue of a parameter, taken into use and empty when it wasn't in use; `index` gets its place. Allocates
    /// only beyond SetMaxParameters, and gives null, with `index` unchanged, when that fails. The reference stays the
    /// pool's.
    /// [process-thread | main-thread & suspended]
    Steinberg::Vst::IParamValueQueue* PLUGIN_API addParameterData(Steinberg::Vst::ParamID const& parameterID,
                                                                  Steinberg::int32& index) override;

private:
    void ClearQueues() noexcept;
    void SetRoom(std::size_t count);
    bool AppendQueue() noexcept;
    bool AppendUnplannedQueue() noexcept;
    void ReleaseQueuesFrom(std::size_t first) noexcept;
    void RebuildIndex(std::size_t places);

    std::vector<ParameterValueQueue*> mPool;
    std::shared_ptr<std::byte[]> mBlock; ///< memory for queues that are not made yet
    std::size_t mRoom = 0;               ///< how many of them
    std::byte* mNextQueue = nullptr;     ///< where in the block the next one goes
    Steinberg::int32 mUsedCount = 0;
    ParameterQueueIndex mIndex;
};

} // namespace vynaudiofilterhost::vst3
