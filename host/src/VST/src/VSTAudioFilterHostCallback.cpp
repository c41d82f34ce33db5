#include "vynaudiofilterhost/IAudioFilterHost.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vyncore/debug/Trace.h"

#include <cmath>

namespace vynaudiofilterhost::vst {

std::intptr_t VSTAudioFilter::AudioMasterCallback(std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                                  void* ptr, float opt) {
    if (std::intptr_t const answer = mEditorCallbacks.Call(opcode, index, value, ptr, opt))
        return answer;
    switch (opcode) {
    case audioMasterAutomate:
        Automate(index, opt);
        return 0;
    case audioMasterPinConnected:
        return AnswerPinConnected(index, value);
    case audioMasterGetTime:
        return AnswerGetTime();
    case audioMasterIOChanged:
        return AnswerIOChanged();
    default:
        return 0;
    }
}

// Effects report what nobody can set as well; listeners are spared that. Some report display values, which would come
// back to them as the end of the range: of those the effect's own word counts, which has the value by now.
void VSTAudioFilter::Automate(std::int32_t index, float value) {
    if (index < 0 || index >= GetParameterCount() || !std::isfinite(value))
        return;
    bool const normalized = value >= 0.0f && value <= 1.0f;
    SetParameterAutomated(index, normalized ? value : GetParameter(index));
}

// 0 is connected.
std::intptr_t VSTAudioFilter::AnswerPinConnected(std::int32_t channel, std::intptr_t side) const {
    constexpr std::intptr_t kInput = 0;
    constexpr std::intptr_t kOutput = 1;
    bool const connected = (side == kInput && channel < mMainInputs.load(std::memory_order_relaxed)) ||
                           (side == kOutput && channel < mMainOutputs.load(std::memory_order_relaxed));
    return connected ? 0 : 1;
}

std::intptr_t VSTAudioFilter::AnswerGetTime() {
    if (IsSuspended())
        return 0;
    mTimeInfo.Touch();
    PlaybackState state;
    if (IAudioFilterHost* const host = GetAudioFilterHost(); host && host->GetPlaybackState(state))
        mTimeInfo.SetPlaybackState(state);
    return reinterpret_cast<std::intptr_t>(mTimeInfo.Get());
}

std::intptr_t VSTAudioFilter::AnswerIOChanged() {
    if (!CurrentThreadIDIsMainThreadID()) {
        vyncore::debug::Trace(0, "VSTAudioFilter", "VST: audioMasterIOChanged sent from non-main thread");
        return 0;
    }
    SendLatencyChanged();
    return 1;
}

} // namespace vynaudiofilterhost::vst
