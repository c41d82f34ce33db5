#include "os/Thread.h"

#include <unistd.h>

namespace os {

unsigned GetCurrentThreadID() noexcept {
    thread_local unsigned const id = static_cast<unsigned>(gettid());
    return id;
}

} // namespace os
