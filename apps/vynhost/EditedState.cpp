#include "vynhost/EditedState.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace vynhost {

namespace {

/// As many buffers of silence as there are channels.
class SilentChannels {
public:
    SilentChannels(int channels, int samples)
        : mBuffers(static_cast<std::size_t>(channels), std::vector<float>(static_cast<std::size_t>(samples))) {
        for (std::vector<float>& buffer : mBuffers)
            mPointers.push_back(buffer.data());
    }

    float** Get() noexcept { return mPointers.data(); }

private:
    std::vector<std::vector<float>> mBuffers;
    std::vector<float*> mPointers;
};

} // namespace

EditedState::EditedState(vynaudiofilterhost::AudioFilter& filter, std::string path)
    : mFilter(filter),
      mFile(std::move(path)),
      mConnection(filter.ConnectAutomatedParameterChange([this](int index, float) { HearValue(index); })) {}

void EditedState::HearValue(int index) {
    std::lock_guard const lock(mMutex);
    mEdited.insert(index);
}

void EditedState::Save() {
    if (mFilter.IsSuspended())
        Settle();
    mFile.Capture(mFilter);
    mFile.Write();
}

void EditedState::Settle() {
    std::set<int> edited;
    {
        std::lock_guard const lock(mMutex);
        edited.swap(mEdited);
    }
    if (edited.empty())
        return;
    int const samples = mFilter.GetBlockSize();
    SilentChannels in(mFilter.GetNumberOfInputChannels(), samples);
    SilentChannels out(mFilter.GetNumberOfOutputChannels(), samples);
    vynaudiofilterhost::ChannelFlags silent;
    mFilter.SetUseChannelMap(false);
    mFilter.Resume();
    // Edits of a suspended filter went to its plug-in without a block, which some take no notice of.
    for (int const index : edited)
        mFilter.SetParameter(index, mFilter.GetParameter(index));
    mFilter.ProcessWithMapping(in.Get(), out.Get(), samples, {}, silent);
    mFilter.Suspend();
}

} // namespace vynhost
