#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"
#include "vynaudiofilterhost/PluginCounts.h"

#include "vyncore/proplist/PropList.h"

#include <boost/thread/locks.hpp>

#include <algorithm>
#include <cassert>
#include <utility>

namespace vynaudiofilterhost {

using vyncore::proplist::PropList;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;
using vynmediatypes::ChannelMap;
using Lock = boost::unique_lock<boost::recursive_mutex>;

namespace {

constexpr char const* kInputMappingKey = "InputMapping";
constexpr char const* kOutputMappingKey = "OutputMapping";

} // namespace

ChannelMap& AudioFilter::MapOf(Direction direction) noexcept {
    return direction == kDirectionInput ? mInputMap : mOutputMap;
}

ChannelMap const& AudioFilter::MapOf(Direction direction) const noexcept {
    return direction == kDirectionInput ? mInputMap : mOutputMap;
}

void AudioFilter::BuildChannelMaps() {
    // First of all: asking may run the code of a plug-in, and that of whoever listens to the filter.
    int const latency = GetInitialDelay();
    if (!mUseChannelMap) {
        mRouter.SizeDirect(GetNumberOfInputChannels(), mBlockSize);
        return;
    }
    Lock const lock(mChannelMapMutex);
    int const mainChannels = mMainTargetBus.GetChannelCount();
    mRouter.SizeMapped({.inputChannels = GetNumberOfInputChannels(),
                        .outputChannels = GetNumberOfOutputChannels(),
                        .mainChannels = mainChannels,
                        .passesAround = !mOutputBuses.empty(),
                        .blockSize = mBlockSize,
                        .delay = PlausibleCount(latency, kMaxDelayedSamples / std::max(mainChannels, 1))});
    UpdateChannelMapArraysForRendering();
}

void AudioFilter::UpdateChannelMapArraysForRendering() {
    mRouter.Update(mInputMap, mOutputMap, mMainTargetBus.GetChannelCount(), mSideChainTargetBus.GetChannelCount());
}

void AudioFilter::ProcessWithMapping(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                     ChannelFlags& outFlags) {
    assert(mRouter.Fits(numSamples));
    float** filterIn = in;
    float** filterOut = out;
    ChannelFlags filterInFlags = inFlags;
    mRouter.Map(filterIn, filterOut, filterInFlags);
    // Parameter messages take effect here, ahead of the audio of this block.
    mMessageHandler.PumpFromProcessThread();
    ChannelFlags filterOutFlags;
    Process(filterIn, filterOut, numSamples, filterInFlags, filterOutFlags);
    outFlags = mRouter.FinishOutputs(in, out, numSamples, inFlags, filterOutFlags);
}

ChannelMap AudioFilter::GetChannelMap(Direction direction) const {
    Lock const lock(mChannelMapMutex);
    return MapOf(direction);
}

int AudioFilter::GetEffectChannelIndexForTarget(int targetChannel, Direction direction) const {
    Lock const lock(mChannelMapMutex);
    return MapOf(direction).Find(targetChannel);
}

// Changes a map under the lock; without it the change reaches the render thread, and is announced.
template <class Change>
void AudioFilter::ChangeChannelMap(Direction direction, Change const& change) {
    ChannelMap const before = MapOf(direction);
    ChannelMap since = before;
    change(since);
    ChannelMap stored = since;
    {
        Lock const lock(mChannelMapMutex);
        std::swap(MapOf(direction), stored);
    }
    if (!IsSuspended())
        UpdateChannelMapArraysForRendering();
    mChannelMapChanged(direction, before, since);
}

void AudioFilter::SetChannelMap(ChannelMap const& map, Direction direction) {
    ChangeChannelMap(direction, [&map](ChannelMap& changed) { changed = map; });
}

void AudioFilter::AssignChannelMapping(Direction direction, int filterChannel, int targetChannel) {
    ChangeChannelMap(direction, [=](ChannelMap& map) {
        utility::RemoveMappingFromSource(map, filterChannel);
        utility::RemoveMappingToTarget(map, targetChannel);
        utility::SetMapping(map, filterChannel, targetChannel);
    });
}

void AudioFilter::RemoveChannelMapping(Direction direction, int filterChannel) {
    ChangeChannelMap(direction,
                     [filterChannel](ChannelMap& map) { utility::RemoveMappingFromSource(map, filterChannel); });
}

void AudioFilter::DisconnectLostSideChain(int former, int remaining) {
    ChangeChannelMap(kDirectionInput, [=, first = mMainTargetBus.GetChannelCount()](ChannelMap& map) {
        for (int channel = remaining; channel < former; ++channel)
            utility::RemoveMappingFromSource(map, first + channel);
    });
}

void AudioFilter::SetDefaultChannelMap(Direction direction) {
    bool const input = direction == kDirectionInput;
    int const channels = utility::CountChannels(input ? mInputBuses : mOutputBuses);
    int const targets = mMainTargetBus.GetChannelCount() + (input ? mSideChainTargetBus.GetChannelCount() : 0);
    utility::CreateEmptyChannelMap(std::min(channels, targets), true, MapOf(direction));
}

bool AudioFilter::IsChannelMapDefault(Direction direction) const {
    ChannelMap map;
    utility::CreateEmptyChannelMap(utility::CountChannels(direction == kDirectionInput ? mInputBuses : mOutputBuses),
                                   true, map);
    return MapOf(direction).IsMappingEqual(map);
}

void AudioFilter::AutoConnectSideChainChannels(bool disconnectFirst) {
    ChannelMap map = mInputMap;
    int const channels = GetNumberOfInputChannels();
    int next = mMainTargetBus.GetChannelCount();
    for (int channel = next; disconnectFirst && channel < channels; ++channel)
        utility::RemoveMappingFromSource(map, channel);
    int start = GetNumberOfOutputChannels() < channels ? GetNumberOfOutputChannels() : 0;
    if (mInputBuses.size() == 2)
        start = mInputBuses.front().GetChannelCount();
    AudioChannelLayout layout = mSideChainTargetBus.GetLayout();
    utility::AssignChannels(map, layout, next, channels, start);
    if (map != mInputMap)
        SetChannelMap(map, kDirectionInput);
}

bool AudioFilter::SaveChannelMapSettings(PropList* list) const {
    Lock const lock(mChannelMapMutex);
    auto const save = [list](char const* key, ChannelMap const& map) {
        PropList& stored = list->CreateList(key);
        stored.Clear(); // a longer map may lie there
        return utility::SaveChannelMap(map, &stored);
    };
    return mUseChannelMap && list && save(kInputMappingKey, mInputMap) && save(kOutputMappingKey, mOutputMap);
}

bool AudioFilter::LoadChannelMapSettings(PropList const* list, bool fillUnmapped) {
    Lock const lock(mChannelMapMutex);
    if (!mUseChannelMap || !list)
        return false;
    auto const load = [&](char const* key, Buses const& buses, ChannelMap& map) {
        PropList const* const stored = list->FindList(key);
        return stored &&
               utility::LoadChannelMap(stored, mMainTargetBus, utility::CountChannels(buses), fillUnmapped, map);
    };
    return load(kInputMappingKey, mInputBuses, mInputMap) && load(kOutputMappingKey, mOutputBuses, mOutputMap);
}

ChannelMap AudioFilter::BuildBestFitChannelMap(Buses const& buses, AudioChannelLayout const& targetLayout) {
    return utility::BuildBestFitChannelMap(buses, targetLayout);
}

} // namespace vynaudiofilterhost
