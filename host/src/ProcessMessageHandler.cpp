#include "vynaudiofilterhost/ProcessMessageHandler.h"

#include "vynaudiofilterhost/MainThread.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace vynaudiofilterhost {

ProcessMessageHandler::ProcessMessageHandler() = default;

ProcessMessageHandler::~ProcessMessageHandler() = default;

void ProcessMessageHandler::Post(boost::intrusive_ptr<Message> message) {
    assert(message);
    mMessages.push_back(std::move(message));
    TransferMessagesToQueue();
}

void ProcessMessageHandler::ExecuteQueued() {
    boost::intrusive_ptr<Message> message;
    std::uint64_t readIndex = mReadIndex.load(std::memory_order_relaxed);
    while (readIndex != mWriteIndex.load(std::memory_order_acquire)) {
        message = std::move(mRing[readIndex]);
        mReadIndex.store(NextSlot(readIndex), std::memory_order_release);
        Execute(*message, &Message::ExecuteOnProcessThread, Message::kStateWaitingForMain);
        // Read anew: a message may have posted to a suspended filter, which pumps this ring from within.
        readIndex = mReadIndex.load(std::memory_order_relaxed);
    }
}

void ProcessMessageHandler::PumpFromMainThread() {
    TransferMessagesToQueue();
    while (!mProcessing.load(std::memory_order_relaxed)) {
        PumpFromProcessThread();
        // More may wait than the ring holds, and after Suspend nobody comes back for them.
        if (mFirstWaiting == mMessages.size())
            break;
        TransferMessagesToQueue();
    }
    // A message that posts from its main side comes back here. It still waits for main itself, so a second walk would
    // run it again, and a purge would move the list under the first walk.
    if (mPumpingMain)
        return;
    ExecuteWaitingForMain();
    PurgeProcessedMessages();
}

void ProcessMessageHandler::SetProcessing(bool processing) {
    mProcessing.store(processing, std::memory_order_relaxed);
}

void ProcessMessageHandler::FlushMessageQueue() {
    if (CurrentThreadIDIsMainThreadID())
        PumpFromMainThread();
    else
        PumpFromProcessThread();
}

bool ProcessMessageHandler::Execute(Message& message, bool (Message::*side)(), Message::State otherwise) {
    try {
        bool const finished = (message.*side)();
        message.SetState(finished ? Message::kStateProcessed : otherwise);
        return finished;
    } catch (...) {
        // Finished for good: it must neither run again nor stay in the list and hold its filter.
        message.SetState(Message::kStateProcessed);
        throw;
    }
}

bool ProcessMessageHandler::CanDeleteMessage(boost::intrusive_ptr<Message> const& message) {
    return message->GetState() == Message::kStateDeletable;
}

void ProcessMessageHandler::TransferMessagesToQueue() {
    std::uint64_t writeIndex = mWriteIndex.load(std::memory_order_relaxed);
    for (; mFirstWaiting < mMessages.size(); ++mFirstWaiting) {
        boost::intrusive_ptr<Message> const& message = mMessages[mFirstWaiting];
        if (message->GetState() != Message::kStateWaitingForProcess)
            continue;
        std::uint64_t const nextIndex = NextSlot(writeIndex);
        if (nextIndex == mReadIndex.load(std::memory_order_acquire))
            return;
        message->SetState(Message::kStateInProcessQueue);
        mRing[writeIndex] = message;
        mWriteIndex.store(nextIndex, std::memory_order_release);
        writeIndex = nextIndex;
    }
}

void ProcessMessageHandler::ExecuteWaitingForMain() {
    struct PumpingScope {
        bool& flag;
        explicit PumpingScope(bool& pumping) : flag(pumping) { flag = true; }
        ~PumpingScope() { flag = false; }
    } const scope(mPumpingMain);

    // By place and not by iterator: a message may post others, which join the end of the list. None leaves it
    // meanwhile.
    for (std::size_t place = 0; place < mMessages.size(); ++place) {
        Message& message = *mMessages[place];
        if (message.GetState() != Message::kStateWaitingForMain)
            continue;
        if (!Execute(message, &Message::ExecuteOnMainThread, Message::kStateWaitingForProcess))
            mFirstWaiting = std::min(mFirstWaiting, place);
    }
}

void ProcessMessageHandler::PurgeProcessedMessages() {
    mFirstWaiting = 0;
    for (boost::intrusive_ptr<Message> const& message : mMessages) {
        if (message->GetState() == Message::kStateProcessed && message->GetRefCount() == 1)
            message->SetState(Message::kStateDeletable);
    }
    auto const keptEnd = std::stable_partition(mMessages.begin(), mMessages.end(),
                                               [](auto const& message) { return !CanDeleteMessage(message); });
    if (keptEnd == mMessages.end())
        return;
    // A message may hold the last reference to the filter that owns this queue: they go when the list is done with, and
    // nothing of this object is touched afterwards.
    std::vector<boost::intrusive_ptr<Message>> const finished(std::make_move_iterator(keptEnd),
                                                              std::make_move_iterator(mMessages.end()));
    mMessages.erase(keptEnd, mMessages.end());
}

} // namespace vynaudiofilterhost
