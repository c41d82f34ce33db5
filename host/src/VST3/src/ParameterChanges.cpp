#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::Vst::IParamValueQueue;

ParameterChanges::~ParameterChanges() {
    ReleaseQueuesFrom(0);
}

void ParameterChanges::SetMaxParameters(int count) {
    if (count < 0)
        return;
    auto const wanted = static_cast<std::size_t>(count);
    mUsedCount = std::min<int32>(mUsedCount, count);
    ReleaseQueuesFrom(wanted);
    mRoom = 0; // what is set aside belongs to the index as it was
    RebuildIndex(wanted);
    SetRoom(wanted - mPool.size());
}

void ParameterChanges::ClearQueues() noexcept {
    mUsedCount = 0;
    mIndex.Clear();
}

int32 PLUGIN_API ParameterChanges::getParameterCount() {
    return mUsedCount;
}

IParamValueQueue* PLUGIN_API ParameterChanges::getParameterData(int32 index) {
    return index >= 0 && index < mUsedCount ? mPool[static_cast<std::size_t>(index)] : nullptr;
}

IParamValueQueue* PLUGIN_API ParameterChanges::addParameterData(Steinberg::Vst::ParamID const& parameterID,
                                                                int32& index) {
    int32 const known = mIndex.Find(parameterID);
    if (known >= 0) {
        index = known;
        return mPool[static_cast<std::size_t>(known)];
    }
    auto const place = static_cast<std::size_t>(mUsedCount);
    if (place == mPool.size() && !AppendQueue())
        return nullptr;
    mPool[place]->Assign(parameterID);
    mIndex.Insert(parameterID, mUsedCount);
    index = mUsedCount++;
    return mPool[place];
}

void ParameterChanges::SetRoom(std::size_t count) {
    mPool.reserve(mPool.size() + count);
    // Left uninitialised: its pages become real only as queues are made in it.
    mBlock.reset(new std::byte[count * ParameterValueQueue::kBytes]);
    mNextQueue = mBlock.get();
    mRoom = count;
}

bool ParameterChanges::AppendQueue() noexcept {
    if (mRoom == 0)
        return AppendUnplannedQueue();
    mPool.push_back(ParameterValueQueue::MakeIn(mBlock, mNextQueue));
    mNextQueue += ParameterValueQueue::kBytes;
    --mRoom;
    return true;
}

bool ParameterChanges::AppendUnplannedQueue() noexcept {
    try {
        if (mIndex.Room() == mPool.size())
            RebuildIndex(2 * mPool.size());
        OwnedObject<ParameterValueQueue> queue(new ParameterValueQueue);
        mPool.push_back(queue.get());
        static_cast<void>(queue.release());
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

void ParameterChanges::ReleaseQueuesFrom(std::size_t first) noexcept {
    for (std::size_t i = first; i < mPool.size(); ++i)
        mPool[i]->Disown();
    mPool.resize(std::min(first, mPool.size()));
}

void ParameterChanges::RebuildIndex(std::size_t places) {
    mIndex.Reset(places);
    for (int32 place = 0; place < mUsedCount; ++place)
        mIndex.Insert(mPool[static_cast<std::size_t>(place)]->getParameterId(), place);
}

} // namespace vynaudiofilterhost::vst3
