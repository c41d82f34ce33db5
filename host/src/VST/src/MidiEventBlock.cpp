#include "vynaudiofilterhost/VST/src/MidiEventBlock.h"

#include <cstddef>
#include <cstring>
#include <new>

namespace vynaudiofilterhost::vst {

namespace {

// One pointer more than there are events: some effects look for a null at the end.
constexpr std::size_t kBlockBytes = 2080;
static_assert(kBlockBytes >= sizeof(VstEvents) + (MidiEventBlock::kMaxEvents + 1) * sizeof(void*));

} // namespace

MidiEventBlock::MidiEventBlock() : mBlock(kBlockBytes), mEvents(kMaxEvents), mHead(new (mBlock.data()) VstEvents{}) {
    unsigned char* place = mBlock.data() + sizeof(VstEvents);
    for (VstMidiEvent& event : mEvents) {
        event.type = kVstMidiType;
        event.byteSize = sizeof(VstMidiEvent);
        VstMidiEvent* const pointer = &event;
        std::memcpy(place, &pointer, sizeof(void*));
        place += sizeof(void*);
    }
}

void MidiEventBlock::Add(bool live, unsigned deltaFrames, unsigned char status, unsigned char data1,
                         unsigned char data2) noexcept {
    if (mHead->numEvents < 0 || mHead->numEvents >= kMaxEvents)
        return;
    VstMidiEvent& event = mEvents[static_cast<std::size_t>(mHead->numEvents++)];
    event.flags = live ? kVstMidiEventIsRealtime : 0;
    event.deltaFrames = static_cast<std::int32_t>(deltaFrames);
    event.midiData[0] = status;
    event.midiData[1] = data1;
    event.midiData[2] = data2;
}

} // namespace vynaudiofilterhost::vst
