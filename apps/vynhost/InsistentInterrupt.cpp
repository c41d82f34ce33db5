#include "vynhost/InsistentInterrupt.h"

#include "os/Clock.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>

namespace vynhost {

namespace {

using Handler = void (*)(int);

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

// Read in a handler: all of it is there before one can run.
std::array<std::atomic<Handler>, kSignals.size()> theFormerHandlers;
std::atomic<std::uint64_t> theFirstNanos = 0; ///< 0 until there was a wish
static_assert(std::atomic<Handler>::is_always_lock_free && std::atomic<std::uint64_t>::is_always_lock_free);

void Hear(int signal) {
    std::uint64_t const now = os::GetMonotonicNanos();
    std::uint64_t first = 0;
    if (!theFirstNanos.compare_exchange_strong(first, now) && now - first > InsistentInterrupt::kGraceNanos) {
        // Held back until the handler returns.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
        return;
    }
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        if (Handler const former = theFormerHandlers[i]; kSignals[i] == signal && former != SIG_DFL)
            former(signal);
    }
}

} // namespace

InsistentInterrupt::InsistentInterrupt() noexcept {
    theFirstNanos = 0;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        // One that arrives in between is ignored; nobody else can have been told of it.
        theFormerHandlers[i] = std::signal(kSignals[i], SIG_IGN);
        if (theFormerHandlers[i] != SIG_IGN)
            std::signal(kSignals[i], Hear);
    }
}

InsistentInterrupt::~InsistentInterrupt() {
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        std::signal(kSignals[i], theFormerHandlers[i]);
}

} // namespace vynhost
