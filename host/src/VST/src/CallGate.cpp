#include "vynaudiofilterhost/VST/src/CallGate.h"

#include <chrono>
#include <thread>

namespace vynaudiofilterhost::vst {

namespace {

thread_local CallGate::Pass* theInnermost = nullptr;

} // namespace

CallGate::Pass::Pass(CallGate& gate) noexcept : mGate(gate), mSide(gate.Enter()), mOuter(theInnermost) {
    theInnermost = this;
}

CallGate::Pass::~Pass() {
    theInnermost = mOuter;
    mGate.mCalls[mSide].fetch_sub(1, std::memory_order_seq_cst);
}

// A side that was closed between the look at it and the count may have been found empty: the call goes to the other.
unsigned CallGate::Enter() noexcept {
    for (;;) {
        unsigned const side = mOpenSide.load(std::memory_order_seq_cst);
        mCalls[side].fetch_add(1, std::memory_order_seq_cst);
        if (mOpenSide.load(std::memory_order_seq_cst) == side)
            return side;
        mCalls[side].fetch_sub(1, std::memory_order_seq_cst);
    }
}

void CallGate::WaitForCalls() noexcept {
    unsigned const open = mOpenSide.load(std::memory_order_relaxed);
    // Where nobody comes in any more there may still be a call that waited for others itself.
    WaitForSide(1 - open);
    mOpenSide.store(1 - open, std::memory_order_seq_cst);
    WaitForSide(open);
}

void CallGate::WaitForSide(unsigned side) const noexcept {
    // A call that takes its time is one that waits itself, as a rule.
    constexpr int kTurnsInHaste = 1000;
    for (int turn = 0; mCalls[side].load(std::memory_order_seq_cst) > CountOwn(side); ++turn) {
        if (turn < kTurnsInHaste)
            std::this_thread::yield();
        else
            std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
}

bool CallGate::IsInside() const noexcept {
    return CountOwn(0) + CountOwn(1) != 0;
}

int CallGate::CountOwn(unsigned side) const noexcept {
    int count = 0;
    for (Pass const* pass = theInnermost; pass; pass = pass->mOuter)
        count += &pass->mGate == this && pass->mSide == side ? 1 : 0;
    return count;
}

} // namespace vynaudiofilterhost::vst
