#include "plugins/VSTFixtureEffect.h"
#include "plugins/VSTFixtureState.h"

#include <algorithm>
#include <cstring>

namespace vynfixtures {

using namespace vynaudiofilterhost::vst;

namespace {

/// Channels of an effect that says it has none or too many are left alone.
int Touched(std::int32_t count) {
    return count < 0 || count > kVSTFixtureMaxChannels ? 0 : count;
}

void Snapshot(VSTFixtureBlock& block, AEffect const& effect, float** in, float** out, std::int32_t frames) {
    block = {};
    block.frames = frames;
    block.inputCount = effect.numInputs;
    block.outputCount = effect.numOutputs;
    for (int channel = 0; channel < Touched(effect.numInputs); ++channel) {
        block.inputs[channel] = in[channel];
        block.nullChannels += in[channel] == nullptr;
    }
    for (int channel = 0; channel < Touched(effect.numOutputs); ++channel) {
        block.outputs[channel] = out[channel];
        block.nullChannels += out[channel] == nullptr;
        block.firstOutputs[channel] = out[channel] != nullptr && frames > 0 ? out[channel][0] : 0.0f;
    }
}

/// Reads every sample of an input that has no output of its number, as effects with a side chain do.
float Listen(float const* in, std::int32_t frames) {
    float sum = 0.0f;
    for (std::int32_t sample = 0; sample < frames; ++sample)
        sum += in[sample];
    return sum;
}

} // namespace

void VSTFixtureEffect::Process(std::int32_t opcode, float** in, float** out, std::int32_t frames) {
    bool const accumulates = opcode == kVSTFixtureProcess;
    if (mConfiguration.logging) {
        VSTFixtureBlock& block = VSTFixtureState::Get().snapshot.block;
        Snapshot(block, *this, in, out, frames);
        block.accumulates = accumulates;
    }
    Enter(opcode, 0, frames, in, 0.0f);
    float const gain = 2.0f * mValues[mProgram][0];
    int const inputs = Touched(numInputs);
    int const outputs = Touched(numOutputs);
    for (int channel = 0; channel < outputs; ++channel)
        for (std::int32_t sample = 0; sample < frames; ++sample) {
            float const value = channel < inputs ? gain * in[channel][sample] : 0.0f;
            out[channel][sample] = accumulates ? out[channel][sample] + value : value;
        }
    float heard = 0.0f;
    for (int channel = outputs; channel < inputs; ++channel)
        heard += Listen(in[channel], frames);
    mHeard = heard;
}

void VSTFixtureEffect::TakeEvents(void const* block) const {
    VSTFixtureEvents& taken = VSTFixtureState::Get().snapshot.events;
    auto const& head = *static_cast<VstEvents const*>(block);
    auto const* const pointers =
        reinterpret_cast<VstMidiEvent const* const*>(static_cast<unsigned char const*>(block) + sizeof(VstEvents));
    taken.count = head.numEvents;
    taken.reserved = head.reserved;
    for (int event = 0; event < std::min(head.numEvents, kVSTFixtureMaxEvents); ++event)
        taken.events[event] = *pointers[event];
}

float* VSTFixtureEffect::ValueOf(std::int32_t index) {
    return index >= 0 && index < 16 ? &mValues[mProgram][index] : nullptr;
}

void VSTFixtureEffect::SetParameter(std::int32_t index, float value) {
    Enter(kVSTFixtureSetParameter, index, 0, nullptr, value);
    if (float* const stored = ValueOf(index))
        *stored = value;
}

float VSTFixtureEffect::GetParameter(std::int32_t index) {
    Enter(kVSTFixtureGetParameter, index, 0, nullptr, 0.0f);
    float const* const stored = ValueOf(index);
    return stored != nullptr ? *stored : 0.0f;
}

} // namespace vynfixtures
