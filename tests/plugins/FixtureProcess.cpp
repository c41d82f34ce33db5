#include "plugins/FixtureProcessor.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <stdexcept>

namespace vynfixtures {
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
    float const amount = event.type == Event::kNoteOffEvent        ? event.noteOff.velocity
                         : event.type == Event::kPolyPressureEvent ? event.polyPressure.pressure
                                                                   : event.noteOn.velocity;
    return {event.busIndex,     event.sampleOffset, event.type, event.noteOn.channel,
            event.noteOn.pitch, event.flags,        amount};
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
    block.hasInputEvents = data.inputEvents != nullptr;
    block.changeCount = block.hasInputChanges ? data.inputParameterChanges->getParameterCount() : 0;
    for (int i = 0; i < block.changeCount; ++i)
        if (auto* const queue = data.inputParameterChanges->getParameterData(i))
            SnapshotPoints(*queue, block);
    if (block.hasInputEvents)
        SnapshotEvents(*data.inputEvents, block);
}

// Logs a process call and keeps its facts. Takes no lock and allocates nothing.
void SnapshotBlock(ProcessData const& data, FixtureBlock& block) {
    block = {};
    block.numSamples = data.numSamples;
    SnapshotBuses(data.numInputs, data.inputs, block.inputs);
    SnapshotBuses(data.numOutputs, data.outputs, block.outputs);
    if (data.processContext != nullptr)
        SnapshotContext(*data.processContext, block);
    SnapshotLists(data, block);
    Record(FixtureObject::Component, "process",
           {data.numSamples, {data.numInputs, block.changeCount}, static_cast<double>(block.projectTimeSamples)});
}

uint64 AllChannels(int32 count) {
    return count >= 64 ? ~uint64{0} : (uint64{1} << count) - 1;
}

bool IsSilent(ProcessData const& data) {
    for (int32 bus = 0; bus < data.numInputs; ++bus)
        if (uint64 const all = AllChannels(data.inputs[bus].numChannels); (data.inputs[bus].silenceFlags & all) != all)
            return false;
    return data.numInputs > 0;
}

} // namespace

tresult FixtureProcessor::process(ProcessData& data) {
    if (mConfiguration.logging)
        SnapshotBlock(data, ModuleState::Get().snapshot.block);
    ReadChanges(data.inputParameterChanges);
    int const call = mProcessCalls++;
    bool const faulty = mConfiguration.processFaultAt == -1 || mConfiguration.processFaultAt == call;
    if (faulty)
        FailIfTold();
    if (mConfiguration.performEditInProcess)
        if (auto const handler = Ask<IComponentHandler>(mLink.GetContext(), IComponentHandler_iid))
            Record(kObject, "host:performEdit", {handler->performEdit(0, 0.25), {}, 0.25});
    WriteOutputs(data);
    if (!mConfiguration.nullDsp)
        Render(data);
    if (mConfiguration.spoilsOutputs && data.numOutputs > 0) {
        data.outputs[0].channelBuffers32 = nullptr;
        data.outputs[0].numChannels = 0;
        data.numOutputs = 0;
    }
    return faulty && Fails(FixtureFault::ProcessFails) ? kInternalError : kResultOk;
}

void FixtureProcessor::ReadChanges(IParameterChanges* changes) {
    int32 const count = changes != nullptr ? changes->getParameterCount() : 0;
    for (int32 i = 0; i < count; ++i) {
        IParamValueQueue* const queue = changes->getParameterData(i);
        int32 const points = queue != nullptr ? queue->getPointCount() : 0;
        int32 offset = 0;
        ParamValue value = 0.0;
        if (points > 0 && queue->getPoint(points - 1, offset, value) == kResultOk && queue->getParameterId() == 0)
            mGain = value;
    }
}

void FixtureProcessor::FailIfTold() const {
    if (Fails(FixtureFault::ProcessThrows))
        throw std::runtime_error("fixture");
    if (Fails(FixtureFault::ProcessThrowsInt))
        throw 42;
}

void FixtureProcessor::WriteOutputs(ProcessData& data) const {
    int32 index = 0;
    for (int32 k = 0; k < mConfiguration.outputPointCount && data.outputParameterChanges != nullptr; ++k)
        if (auto* const queue = data.outputParameterChanges->addParameterData(0, index))
            queue->addPoint(k, k / 1024.0, index);
}

void FixtureProcessor::Render(ProcessData& data) {
    bool const silent = mConfiguration.silenceFlags && mDelay == 0 && IsSilent(data);
    std::size_t channel = 0;
    for (int32 bus = 0; bus < data.numOutputs; ++bus) {
        AudioBusBuffers& out = data.outputs[bus];
        AudioBusBuffers const in = bus < data.numInputs ? data.inputs[bus] : AudioBusBuffers();
        for (int32 c = 0; c < out.numChannels; ++c)
            RenderChannel(c < in.numChannels ? in.channelBuffers32[c] : nullptr, out.channelBuffers32[c],
                          data.numSamples, channel++);
        if (silent)
            out.silenceFlags = AllChannels(out.numChannels);
    }
    if (mDelay != 0)
        mDelayPosition = (mDelayPosition + static_cast<std::size_t>(data.numSamples)) % mDelay;
}

void FixtureProcessor::RenderChannel(float const* in, float* out, int32 count, std::size_t channel) {
    if (out == nullptr)
        return;
    auto const gain = static_cast<float>(2.0 * mGain);
    if (in == nullptr)
        std::fill_n(out, count, 0.0F);
    else
        std::transform(in, in + count, out, [gain](float sample) { return sample * gain; });
    if (mDelay == 0 || channel >= kFixtureMaxChannels)
        return;
    float* const line = mDelayLines.data() + channel * mDelay;
    for (std::size_t i = 0, position = mDelayPosition; i < static_cast<std::size_t>(count); ++i, ++position)
        std::swap(out[i], line[position % mDelay]);
}

} // namespace vynfixtures
