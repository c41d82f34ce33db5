#include "vynaudiofilterhost/VST3/src/VST3EventList.h"

#include <algorithm>
#include <cstddef>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::tresult;

VST3EventList::VST3EventList(int capacity)
    : HostObject(Life::kOwned), mEvents(static_cast<std::size_t>(std::max(capacity, 0))) {}

int32 PLUGIN_API VST3EventList::getEventCount() {
    return mCount;
}

tresult PLUGIN_API VST3EventList::getEvent(int32 index, Steinberg::Vst::Event& event) {
    if (index < 0 || index >= mCount)
        return Steinberg::kResultFalse;
    event = mEvents[static_cast<std::size_t>(index)];
    return Steinberg::kResultOk;
}

tresult PLUGIN_API VST3EventList::addEvent(Steinberg::Vst::Event& event) {
    auto const place = static_cast<std::size_t>(mCount);
    if (place >= mEvents.size())
        return Steinberg::kResultFalse;
    mEvents[place] = event;
    ++mCount;
    return Steinberg::kResultOk;
}

} // namespace vynaudiofilterhost::vst3
