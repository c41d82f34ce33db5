#pragma once

#include "vynaudiofilterhost/VST3/src/HostObject.h"

#include "pluginterfaces/vst/ivstevents.h"

#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The events of one block, in the order in which they were added. A filter makes one per direction in which the
/// plug-in has event buses. It never grows: what comes when it is full is dropped. Data that an event points at stays
/// whose it was; only the pointer is kept.
class VST3EventList final : public HostObject<Steinberg::Vst::IEventList> {
public:
    /// An empty list with room for `capacity` events, none for a negative number. Throws std::bad_alloc.
    /// [main-thread & suspended]
    explicit VST3EventList(int capacity);

    ~VST3EventList() override = default;

    /// Drops all events; the room stays.
    /// [process-thread | main-thread & suspended]
    void Clear() noexcept { mCount = 0; }

    /// [process-thread | main-thread & suspended]
    Steinberg::int32 PLUGIN_API getEventCount() override;

    /// Copies the event at `index`; kResultFalse, and nothing written, when there is none.
    /// [process-thread | main-thread & suspended]
    Steinberg::tresult PLUGIN_API getEvent(Steinberg::int32 index, Steinberg::Vst::Event& event) override;

    /// Adds a copy of the event; kResultFalse when the list is full.
    /// [process-thread | main-thread & suspended]
    Steinberg::tresult PLUGIN_API addEvent(Steinberg::Vst::Event& event) override;

private:
    std::vector<Steinberg::Vst::Event> mEvents; // of a size that is fixed at construction
    Steinberg::int32 mCount = 0;
};

} // namespace vynaudiofilterhost::vst3
