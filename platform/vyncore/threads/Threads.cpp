#include "vyncore/threads/Threads.h"

#include "os/Thread.h"

namespace vyncore::threads {

unsigned GetCurrentThreadID() noexcept {
    return os::GetCurrentThreadID();
}

} // namespace vyncore::threads
