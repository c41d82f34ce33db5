#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vyncore/strings/StringStreams.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace vynaudiofilterhost::vst {

// An effect that has fewer parameters than before isn't asked for the others.
int VSTAudioFilter::GetParameterCount() const {
    int const listed = mListedParameters.load(std::memory_order_relaxed);
    return GetEffect() ? std::clamp(GetEffect()->numParams, 0, listed) : 0;
}

float VSTAudioFilter::GetParameter(int index) const {
    if (index < 0 || index >= GetParameterCount() || !GetEffect()->getParameter)
        return 0.0f;
    return GetEffect()->getParameter(GetEffect(), index);
}

void VSTAudioFilter::SetParameter(int index, float value) {
    // Few effects are made for what is no number.
    if (index >= 0 && index < GetParameterCount() && std::isfinite(value) && GetEffect()->setParameter)
        GetEffect()->setParameter(GetEffect(), index, value);
    AudioFilter::SetParameter(index, value);
}

boost::intrusive_ptr<AudioFilterParameterInfo> VSTAudioFilter::GetParameterInfo(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= mParameterInfos.size())
        return nullptr;
    return mParameterInfos[static_cast<std::size_t>(index)];
}

AudioFilter::UString VSTAudioFilter::GetParameterString(int index) {
    ParameterText display;
    if (index >= 0 && index < GetParameterCount())
        Dispatch(effGetParamDisplay, index, 0, display.GetBuffer(), 0.0f);
    vyncore::oUTF16StringStream stream;
    // Byte by byte: what effects show here is rarely UTF-8.
    if (std::string const bytes(display.Get()); !bytes.empty())
        stream << bytes.c_str();
    else
        stream << GetParameter(index);
    return stream.str();
}

} // namespace vynaudiofilterhost::vst
