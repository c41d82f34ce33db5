#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringStreams.h"

#include <algorithm>
#include <cstddef>

namespace vynaudiofilterhost {

namespace {

class SetParameterMessage : public Message {
public:
    SetParameterMessage(AudioFilter& filter, int index, float value) : mFilter(&filter), mIndex(index), mValue(value) {}

    bool ExecuteOnProcessThread() override {
        mFilter->SetParameter(mIndex, mValue);
        return true;
    }

private:
    boost::intrusive_ptr<AudioFilter> const mFilter;
    int const mIndex;
    float const mValue;
};

} // namespace

int AudioFilter::GetParameterCount() const {
    return 0;
}

void AudioFilter::SetParameterAutomated(int index, float value) {
    SetParameter(index, value);
    mAutomatedParameterChange(index, value);
}

void AudioFilter::SetParameter(int, float) {
    BumpParameterDirtyCount();
}

float AudioFilter::GetParameter(int) const {
    return 0.0f;
}

boost::intrusive_ptr<AudioFilterParameterInfo> AudioFilter::GetParameterInfo(int) {
    return nullptr;
}

AudioFilter::UString AudioFilter::GetParameterString(int index) {
    vyncore::oUTF16StringStream stream;
    stream << GetParameter(index);
    return stream.str();
}

void AudioFilter::SetParameterIsAutomated(int, bool) {}

std::uint64_t AudioFilter::GetCustomData(int, std::uint64_t, std::vector<float>&) {
    return 0;
}

std::uint64_t AudioFilter::GetCustomData(int, std::uint64_t, std::vector<double>&) {
    return 0;
}

void AudioFilter::PostSetParameter(int index, float value) {
    Post(new SetParameterMessage(*this, index, value));
}

void AudioFilter::BeginEditing(int index) {
    ChangeEditing(index, true);
}

void AudioFilter::EndEditing(int index) {
    ChangeEditing(index, false);
}

bool AudioFilter::IsEditing(int index) const {
    std::lock_guard const lock(mEditingMutex);
    return index >= 0 && static_cast<std::size_t>(index) < mParametersBeingEdited.size() &&
           mParametersBeingEdited[static_cast<std::size_t>(index)];
}

void AudioFilter::ChangeEditing(int index, bool editing) {
    if (index < 0) {
        mEditingStateChange(index, editing);
        return;
    }
    if (StoreEditing(index, editing))
        mEditingStateChange(index, editing);
}

// Whether that changed anything: of two threads with the same news one has it.
bool AudioFilter::StoreEditing(int index, bool editing) {
    auto const place = static_cast<std::size_t>(index);
    std::lock_guard const lock(mEditingMutex);
    if (place >= mParametersBeingEdited.size())
        mParametersBeingEdited.resize(std::max<std::size_t>(2, 2 * place));
    if (IsEditing(index) == editing)
        return false;
    mParametersBeingEdited[place] = editing;
    return true;
}

} // namespace vynaudiofilterhost
