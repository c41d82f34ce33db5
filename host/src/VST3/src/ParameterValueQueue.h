#pragma once

#include "vynaudiofilterhost/VST3/src/HostObject.h"
#include "vynaudiofilterhost/VST3/src/ParameterPoint.h"
#include "vynaudiofilterhost/VST3/src/ParameterPointAllocator.h"

#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <memory>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The values that one parameter takes within one block. Made by the pool of a ParameterChanges, which owns it; a
/// plug-in may hold a reference and outlive the pool with it. It never clears itself between blocks: the pool
/// does, when it gives the queue out again.
///
/// Invariant: the points stand in strictly ascending order of their offsets.
class ParameterValueQueue final : public HostObject<Steinberg::Vst::IParamValueQueue> {
public:
    /// The bytes that MakeIn takes, a multiple of every alignment.
    static std::size_t const kBytes;

    /// A queue without a parameter, with room for kParameterPointCapacity points. Throws std::bad_alloc.
    /// [any-thread]
    ParameterValueQueue();

    /// The same, made in kBytes bytes at `place`, which lie in a block of uninitialised memory that many queues share.
    /// It allocates nothing. The queue keeps the block for as long as anybody has a reference on it.
    /// [process-thread | main-thread & suspended]
    static ParameterValueQueue* MakeIn(std::shared_ptr<std::byte[]> const& block, std::byte* place) noexcept;

    ~ParameterValueQueue() override = default;

    /// Gives the queue to a parameter, without points.
    /// [process-thread | main-thread & suspended]
    void Assign(Steinberg::Vst::ParamID parameterID);

    /// The parameter, kNoParamId before the first Assign.
    /// [process-thread | main-thread & suspended]
    Steinberg::Vst::ParamID PLUGIN_API getParameterId() override;

    /// [process-thread | main-thread & suspended]
    Steinberg::int32 PLUGIN_API getPointCount() override;

    /// The point at `index` in the order of offsets; kResultFalse, and nothing written, when there is none.
    /// [process-thread | main-thread & suspended]
    Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index, Steinberg::int32& sampleOffset,
                                           Steinberg::Vst::ParamValue& value) override;

    /// Adds a point, or replaces the value of the point at that offset; `index` gets its place. Gives kResultOk, or
    /// kOutOfMemory when growth beyond the reserved points fails.
    /// [process-thread | main-thread & suspended]
    Steinberg::tresult PLUGIN_API addPoint(Steinberg::int32 sampleOffset, Steinberg::Vst::ParamValue value,
                                           Steinberg::int32& index) override;

private:
    using Points = std::vector<ParameterPoint, ParameterPointAllocator<ParameterPoint>>;

    ParameterValueQueue(std::shared_ptr<std::byte[]> block, ParameterPoint* slice);

    void Destroy() override;

    Points::iterator FindPlace(Steinberg::int32 sampleOffset);

    std::shared_ptr<std::byte[]> mBlock; ///< null when the queue has memory of its own
    Steinberg::Vst::ParamID mParameterID = Steinberg::Vst::kNoParamId;
    Points mPoints;
};

} // namespace vynaudiofilterhost::vst3
