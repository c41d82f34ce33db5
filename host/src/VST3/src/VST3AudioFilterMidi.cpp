#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"

#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstmidicontrollers.h"

#include <cstring>

namespace vynaudiofilterhost::vst3 {

using Steinberg::kResultOk;
using Steinberg::Vst::Event;

namespace {

constexpr unsigned char kNoteOff = 0x80;
constexpr unsigned char kNoteOn = 0x90;
constexpr unsigned char kPolyPressure = 0xA0;
constexpr unsigned char kControlChange = 0xB0;
constexpr unsigned char kChannelPressure = 0xD0;
constexpr unsigned char kPitchBend = 0xE0;

float ToUnit(unsigned char data) {
    return static_cast<float>(data) / 127.0f;
}

struct ControllerValue {
    Steinberg::Vst::CtrlNumber controller;
    double value; ///< normalized
};

ControllerValue ReadController(unsigned char kind, unsigned char data1, unsigned char data2) {
    if (kind == kControlChange)
        return {data1, data2 / 127.0};
    if (kind == kChannelPressure)
        return {Steinberg::Vst::kAfterTouch, data1 / 127.0};
    return {Steinberg::Vst::kPitchBend, (data2 * 128 + data1) / 16383.0};
}

// False for what has no event: program changes, and whatever is no channel message.
bool FillEventBody(Event& event, unsigned char kind, std::int16_t channel, unsigned char data1, unsigned char data2) {
    switch (kind) {
    case kNoteOff:
        event.type = Event::kNoteOffEvent;
        event.noteOff = {channel, data1, ToUnit(data2), -1, 0.0f};
        return true;
    case kNoteOn:
        event.type = Event::kNoteOnEvent;
        event.noteOn = {channel, data1, 0.0f, ToUnit(data2), 0, -1};
        return true;
    case kPolyPressure:
        event.type = Event::kPolyPressureEvent;
        event.polyPressure = {channel, data1, ToUnit(data2), -1};
        return true;
    default:
        return false;
    }
}

} // namespace

void VST3AudioFilter::ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                                        unsigned char data2) {
    if (!mInputEvents)
        return;
    auto const kind = static_cast<unsigned char>(status & 0xF0);
    auto const channel = static_cast<std::int16_t>(status & 0x0F);
    if (ScheduleMappedController(kind, channel, data1, data2))
        return;
    Event event;
    std::memset(&event, 0, sizeof event);
    event.sampleOffset = static_cast<Steinberg::int32>(sampleOffset);
    event.flags = live ? Event::kIsLive : 0;
    if (FillEventBody(event, kind, channel, data1, data2))
        mInputEvents->addEvent(event);
}

bool VST3AudioFilter::ScheduleMappedController(unsigned char kind, std::int16_t channel, unsigned char data1,
                                               unsigned char data2) {
    bool const isController = kind == kControlChange || kind == kChannelPressure || kind == kPitchBend;
    if (!mMidiMapping || !isController)
        return false;
    ControllerValue const change = ReadController(kind, data1, data2);
    Steinberg::Vst::ParamID id = 0;
    if (mMidiMapping->getMidiControllerAssignment(0, channel, change.controller, id) == kResultOk) {
        Steinberg::int32 index = 0;
        if (auto* const queue = mInputChanges.addParameterData(id, index))
            queue->addPoint(0, change.value, index);
    }
    return true;
}

} // namespace vynaudiofilterhost::vst3
