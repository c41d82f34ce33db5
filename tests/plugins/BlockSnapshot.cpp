#include "plugins/BlockSnapshot.h"

#include "plugins/ModuleState.h"

#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

namespace vynfixtures {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

void SnapshotBuses(int32 count, AudioBusBuffers const* buses, FixtureBlockBuses& facts) {
    facts.count = count;
    facts.present = buses != nullptr;
    int run = 0;
    for (int bus = 0; bus < count && bus < kFixtureMaxBuses && buses != nullptr; ++bus) {
        facts.channels[bus] = buses[bus].numChannels;
        facts.silence[bus] = buses[bus].silenceFlags;
        for (int32 c = 0; c < buses[bus].numChannels && run < kFixtureMaxChannels; ++c)
            facts.buffers[run++] = buses[bus].channelBuffers32[c];
    }
}

void SnapshotContext(ProcessContext const& context, FixtureBlock& block) {
    block.state = context.state;
    block.sampleRate = context.sampleRate;
    block.projectTimeSamples = context.projectTimeSamples;
    block.systemTime = context.systemTime;
    block.projectTimeMusic = context.projectTimeMusic;
    block.barPositionMusic = context.barPositionMusic;
    block.tempo = context.tempo;
    block.timeSigNumerator = context.timeSigNumerator;
    block.timeSigDenominator = context.timeSigDenominator;
}

void SnapshotPoints(IParamValueQueue& queue, FixtureBlock& block) {
    int32 const count = queue.getPointCount();
    for (int32 i = 0; i < count; ++i, ++block.pointCount) {
        FixturePoint point{queue.getParameterId(), -1, -1.0};
        queue.getPoint(i, point.offset, point.value);
        if (block.pointCount < kFixtureMaxPoints)
            block.points[block.pointCount] = point;
    }
}

// Note-on, note-off and polyphonic pressure begin alike; what follows stands elsewhere in each.
FixtureEvent FactsOf(Event const& event) {
    FixtureEvent facts{event.busIndex,     event.sampleOffset,  event.type,  event.noteOn.channel,
                       event.noteOn.pitch, event.noteOn.noteId, event.flags, event.noteOn.velocity};
    if (event.type == Event::kNoteOffEvent) {
        facts.noteId = event.noteOff.noteId;
        facts.amount = event.noteOff.velocity;
    } else if (event.type == Event::kPolyPressureEvent) {
        facts.noteId = event.polyPressure.noteId;
        facts.amount = event.polyPressure.pressure;
    }
    return facts;
}

void SnapshotEvents(IEventList& events, FixtureBlock& block) {
    block.eventCount = events.getEventCount();
    for (int i = 0; i < block.eventCount && i < kFixtureMaxEvents; ++i) {
        Event event{};
        events.getEvent(i, event);
        block.events[i] = FactsOf(event);
    }
}

void SnapshotLists(ProcessData const& data, FixtureBlock& block) {
    block.hasInputChanges = data.inputParameterChanges != nullptr;
    block.hasOutputChanges = data.outputParameterChanges != nullptr;
    block.hasInputEvents = data.inputEvents != nullptr;
    block.hasOutputEvents = data.outputEvents != nullptr;
    block.changeCount = block.hasInputChanges ? data.inputParameterChanges->getParameterCount() : 0;
    for (int i = 0; i < block.changeCount; ++i)
        if (auto* const queue = data.inputParameterChanges->getParameterData(i))
            SnapshotPoints(*queue, block);
    if (block.hasInputEvents)
        SnapshotEvents(*data.inputEvents, block);
    block.outputChangeCount = block.hasOutputChanges ? data.outputParameterChanges->getParameterCount() : 0;
    block.outputEventCount = block.hasOutputEvents ? data.outputEvents->getEventCount() : 0;
}

} // namespace

void SnapshotBlock(ProcessData const& data, FixtureBlock& block) {
    block = {};
    block.numSamples = data.numSamples;
    block.processMode = data.processMode;
    block.sampleSize = data.symbolicSampleSize;
    SnapshotBuses(data.numInputs, data.inputs, block.inputs);
    SnapshotBuses(data.numOutputs, data.outputs, block.outputs);
    block.hasContext = data.processContext != nullptr;
    if (block.hasContext)
        SnapshotContext(*data.processContext, block);
    SnapshotLists(data, block);
    Record(FixtureObject::Component, "process",
           {data.numSamples, {data.numInputs, block.changeCount}, static_cast<double>(block.projectTimeSamples)});
}

} // namespace vynfixtures
