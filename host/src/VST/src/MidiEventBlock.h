#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <vector>

namespace vynaudiofilterhost::vst {

/// The MIDI events that wait for the next block, in the form in which an effect takes them: made once, with room for
/// 256 events, and filled over and over. An event more than that is dropped.
class MidiEventBlock {
public:
    static constexpr int kMaxEvents = 256;

    /// [main-thread]
    MidiEventBlock();
    MidiEventBlock(MidiEventBlock const&) = delete;
    MidiEventBlock& operator=(MidiEventBlock const&) = delete;

    /// @param live         played now, not sequenced
    /// @param deltaFrames  place in the block, in samples
    /// [process-thread]
    void Add(bool live, unsigned deltaFrames, unsigned char status, unsigned char data1, unsigned char data2) noexcept;

    /// [process-thread]
    bool IsEmpty() const noexcept { return mHead->numEvents == 0; }
    void Clear() noexcept { mHead->numEvents = 0; }

    /// What effProcessEvents hands over.
    /// [process-thread]
    VstEvents* Get() noexcept { return mHead; }

private:
    std::vector<unsigned char> mBlock; ///< the head, and a pointer to each event
    std::vector<VstMidiEvent> mEvents;
    VstEvents* mHead; ///< in the block
};

} // namespace vynaudiofilterhost::vst
