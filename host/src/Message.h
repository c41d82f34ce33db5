#pragma once

#include "vyncore/Export.h"
#include "vyncore/utility/RefCountedObject.h"

#include <atomic>
#include <cstdint>

namespace vynaudiofilterhost {

class ProcessMessageHandler;

/// Something that the main thread asks of the process thread, and perhaps hears back of.
///
/// Held through boost::intrusive_ptr and posted with ProcessMessageHandler::Post (or AudioFilter::Post), whose list
/// keeps a reference until the message is finished and nobody else holds it; so it is never destroyed on the process
/// thread. A message that works on a filter holds a counted reference to it.
///
/// Life: waiting for the process side, in the ring, executed there, perhaps waiting for the main side and executed
/// there, to and fro as often as it asks for, processed, deletable.
class VYN_API Message : public vyncore::utility::RefCountedObject {
public:
    /// Where a message stands. There is no value 0.
    enum State : std::int32_t {
        kStateInProcessQueue = 1,    ///< in the ring, waiting for ExecuteOnProcessThread
        kStateWaitingForProcess = 2, ///< in the list, not in the ring; the state at construction
        kStateWaitingForMain = 3,    ///< ExecuteOnProcessThread returned false
        kStateProcessed = 4,         ///< finished
        kStateDeletable = 5          ///< finished, and the list holds the only reference
    };

    Message(Message const&) = delete;
    Message& operator=(Message const&) = delete;
    ~Message() override;

    /// The work between two blocks of audio. True when the message is finished, false when ExecuteOnMainThread has to
    /// go on. The base class has no work here and returns true. [process-thread | main-thread & suspended]
    virtual bool ExecuteOnProcessThread();

    /// The work on the main side, done for a message whose process side returned false. True when the message is
    /// finished, false when it wants the process side again. The base class has no work here and returns true.
    /// [main-thread]
    virtual bool ExecuteOnMainThread();

protected:
    Message();

private:
    friend class ProcessMessageHandler;

    State GetState() const noexcept { return static_cast<State>(mState.load(std::memory_order_acquire)); }
    void SetState(State state) noexcept { mState.exchange(state, std::memory_order_acq_rel); }
    int GetRefCount() const noexcept { return GetReferenceCount(); }

    std::atomic<std::int32_t> mState{kStateWaitingForProcess};
};

} // namespace vynaudiofilterhost
