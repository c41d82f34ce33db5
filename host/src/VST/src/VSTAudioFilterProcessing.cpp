#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"

#include <algorithm>

namespace vynaudiofilterhost::vst {

int VSTAudioFilter::GetInitialDelay() const {
    return GetEffect() ? GetEffect()->initialDelay : 0;
}

void VSTAudioFilter::AllocateChannels() {
    CountChannels();
    mSpareOutput.resize(mMonoExpansion ? static_cast<std::size_t>(std::max(GetBlockSize(), 0)) : 0);
    if (InputCount() > ShownInputs() || OutputCount() > ShownOutputs())
        mChannels.Allocate(std::max(InputCount(), ShownInputs()), std::max(OutputCount(), ShownOutputs()),
                           GetBlockSize());
    else
        mChannels.Free();
}

bool VSTAudioFilter::DoBusesCover(int inputs, int outputs) const noexcept {
    return inputs <= ShownInputs() && outputs <= ShownOutputs();
}

bool VSTAudioFilter::HasChannels() const noexcept {
    return DoBusesCover(InputCount(), OutputCount()) || mChannels.Holds(InputCount(), OutputCount(), GetBlockSize());
}

void VSTAudioFilter::Process(float** in, float** out, int numSamples, ChannelFlags, ChannelFlags& outFlags) {
    outFlags = ChannelFlags();
    AEffect* const effect = GetEffect();
    if (!effect)
        return;
    float* monoIn[2];
    float* monoOut[2];
    float** effectIn = in;
    float** effectOut = out;
    if (mMonoExpansion) {
        monoIn[0] = monoIn[1] = in[0];
        monoOut[0] = out[0];
        monoOut[1] = mSpareOutput.data();
        effectIn = monoIn;
        effectOut = monoOut;
    }
    ProcessEvents();
    // As the last thing before the audio: the effect may have changed its mind about its channels just now.
    if (!FitChannels(effectIn, effectOut, numSamples)) {
        for (int channel = 0; channel < mFilterOutputs; ++channel)
            std::fill_n(out[channel], numSamples, 0.0f);
        if (mEvents)
            mEvents->Clear();
        return;
    }
    try {
        ProcessFunction const process =
            (effect->flags & effFlagsCanReplacing) != 0 ? effect->processReplacing : effect->process;
        if (process)
            process(effect, effectIn, effectOut, numSamples);
        if (mEvents)
            mEvents->Clear();
    } catch (...) {
        // The block is lost; its events come with the next one.
    }
}

void VSTAudioFilter::ProcessEvents() noexcept {
    if (mEvents && mMusicDevice && !mEvents->IsEmpty())
        Dispatch(effProcessEvents, 0, 0, mEvents->Get(), 0.0f);
}

// As a rule the filter has a pointer for every channel of the effect. An effect may say at any time that it has more.
bool VSTAudioFilter::FitChannels(float**& in, float**& out, int numSamples) noexcept {
    int const inputs = GetEffect()->numInputs;
    int const outputs = GetEffect()->numOutputs;
    if (mMonoExpansion && static_cast<std::size_t>(std::max(numSamples, 0)) > mSpareOutput.size())
        return false;
    if (DoBusesCover(inputs, outputs))
        return true;
    if (!mChannels.Holds(inputs, outputs, numSamples))
        return false;
    in = mChannels.Inputs(in, ShownInputs(), numSamples);
    out = mChannels.Outputs(out, ShownOutputs());
    return true;
}

void VSTAudioFilter::ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                                       unsigned char data2) {
    if (mEvents)
        mEvents->Add(live, sampleOffset, status, data1, data2);
}

} // namespace vynaudiofilterhost::vst
