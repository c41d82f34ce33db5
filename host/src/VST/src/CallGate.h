#pragma once

#include <array>
#include <atomic>

namespace vynaudiofilterhost::vst {

/// Lets calls through on any thread, without a lock or a wait, and lets the one who takes away what they use wait until
/// the last of them is out. It is not copied and must outlive the calls.
///
/// 1. Calls that come in while WaitForCalls waits hold it up for a moment at most, however many they are.
/// 2. A thread doesn't wait for the calls that it is in itself.
class CallGate {
public:
    CallGate() = default;
    CallGate(CallGate const&) = delete;
    CallGate& operator=(CallGate const&) = delete;

    /// A call that is inside, for as long as it lives: on the stack of its thread.
    class Pass {
    public:
        /// [any-thread]
        explicit Pass(CallGate& gate) noexcept;
        Pass(Pass const&) = delete;
        Pass& operator=(Pass const&) = delete;
        ~Pass();

    private:
        friend class CallGate;

        CallGate& mGate;
        unsigned const mSide;
        Pass* const mOuter; ///< the call of this thread, of any gate, in which this one was made
    };

    /// Returns when every call of another thread that was inside has left. One thread at a time; what the calls used
    /// must be out of the reach of new ones before.
    /// [any-thread]
    void WaitForCalls() noexcept;

    /// Whether the calling thread is in a call.
    /// [any-thread]
    bool IsInside() const noexcept;

private:
    unsigned Enter() noexcept;
    void WaitForSide(unsigned side) const noexcept;
    int CountOwn(unsigned side) const noexcept;

    // Calls count themselves on the side that is open; the other one runs empty.
    std::atomic<unsigned> mOpenSide{0};
    std::array<std::atomic<int>, 2> mCalls{};
};

} // namespace vynaudiofilterhost::vst
