#pragma once

#include "vynaudiofilterhost/Message.h"
#include "vyncore/Export.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vynaudiofilterhost {

/// The road on which the main thread asks the process thread to do something, and hears back, without either blocking.
///
/// Every filter owns one. Messages wait in a list, which belongs to the main side and may grow, and travel through a
/// ring of 32 places, which has a single producer (the main side) and a single consumer (the process side, or the main
/// side while nothing processes).
///
/// Thread safety: no lock. Each side publishes its index of the ring after it has finished with the slot.
/// Invariants:
/// 1. The list holds one reference to each message from Post until it is purged, so the reference that the process side
///    drops is never the last one.
/// 2. Messages enter the ring in the order of the list.
/// 3. One slot of the ring always stays empty.
class VYN_API ProcessMessageHandler {
public:
    ProcessMessageHandler();
    ProcessMessageHandler(ProcessMessageHandler const&) = delete;
    ProcessMessageHandler& operator=(ProcessMessageHandler const&) = delete;
    virtual ~ProcessMessageHandler();

    /// Lists the message, which must not be null, and moves what the ring has room for into the ring. A full ring is no
    /// failure: the message goes out with a later Post or pump. Never blocks; may throw std::bad_alloc.
    /// [main-thread]
    void Post(boost::intrusive_ptr<Message> message);

    /// Takes the waiting messages out of the ring, in order, and runs the process side of each. Never waits, allocates
    /// or drops a last reference. With nothing queued it costs one load and one comparison.
    /// [process-thread | main-thread & suspended]
    void PumpFromProcessThread() {
        if (mReadIndex.load(std::memory_order_relaxed) != mWriteIndex.load(std::memory_order_acquire))
            ExecuteQueued();
    }

    /// Fills the ring; when nothing processes, does the process side's work too, of all that waits; runs the main side
    /// of the messages that wait for it, and lets go of those that are finished and held by nobody else. Called from
    /// inside a message's ExecuteOnMainThread it only moves the ring on; the outer pump does the rest.
    /// [main-thread]
    void PumpFromMainThread();

    /// Says whether a process thread pumps the ring (true) or the main thread has to (false, the state at
    /// construction). [main-thread & suspended]
    void SetProcessing(bool processing);

    /// Pumps the side that the calling thread belongs to.
    /// [main-thread | process-thread]
    virtual void FlushMessageQueue();

private:
    static constexpr int kMessageQueueSize = 32;
    static constexpr std::uint64_t kSlotCount = kMessageQueueSize + 1;
    static constexpr std::size_t kCacheLine = 64;

    static bool Execute(Message& message, bool (Message::*side)(), Message::State otherwise);
    static bool CanDeleteMessage(boost::intrusive_ptr<Message> const& message);
    static std::uint64_t NextSlot(std::uint64_t slot) noexcept { return slot + 1 == kSlotCount ? 0 : slot + 1; }

    void ExecuteQueued();
    void TransferMessagesToQueue();
    void ExecuteWaitingForMain();
    void PurgeProcessedMessages();

    // The ring. The write index belongs to the side that transfers, the read index to the side that pumps.
    alignas(kCacheLine) std::atomic<std::uint64_t> mWriteIndex{0};
    alignas(kCacheLine) std::atomic<std::uint64_t> mReadIndex{0};
    alignas(kCacheLine) std::array<boost::intrusive_ptr<Message>, kSlotCount> mRing;

    // Main side.
    std::vector<boost::intrusive_ptr<Message>> mMessages;
    std::atomic<bool> mProcessing{false};
    std::size_t mFirstWaiting = 0; ///< no message ahead of this place waits for the process side
    bool mPumpingMain = false;
};

} // namespace vynaudiofilterhost
