#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/proplist/PropList.h"

#include <boost/thread/locks.hpp>

namespace vynaudiofilterhost {

boost::intrusive_ptr<AudioFilter> AudioFilter::Clone(boost::intrusive_ptr<AudioFilter> filter) {
    if (!filter)
        return nullptr;
    filter->FlushMessageQueue();
    AudioFilter const& original = *filter;
    return original.Clone();
}

boost::intrusive_ptr<AudioFilter> AudioFilter::Clone() const {
    boost::intrusive_ptr<AudioFilter> copy = utility::CreateAudioFilter(GetID());
    if (!copy)
        return nullptr;
    copy->DoRequestIOConfiguration(mInputBuses, mOutputBuses);
    copy->SetSampleRate(mSampleRate);

    vyncore::proplist::PropList list;
    boost::intrusive_ptr<PresetData> const settings(new PresetData(list));
    SaveSettings(*settings);
    copy->LoadSettings(*settings);

    copy->SetPresetNameAndDirtyState(GetPresetNameAndDirtyState());
    {
        boost::unique_lock<boost::recursive_mutex> const lock(mChannelMapMutex);
        copy->mInputMap = mInputMap;
        copy->mOutputMap = mOutputMap;
    }
    copy->mMainTargetBus = mMainTargetBus;
    copy->mSideChainTargetBus = mSideChainTargetBus;
    copy->mUseChannelMap = mUseChannelMap;
    return copy;
}

} // namespace vynaudiofilterhost
