#include "vynscripting/duktape/DuktapeHeap.h"

#include "vyncore/utility/HighPrecisionTime.h"

#include <duktape.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <utility>

namespace vynscripting::duktape {

namespace {

using vyncore::utility::HighPrecisionTime;

std::uint64_t Now() noexcept {
    return HighPrecisionTime::GetCurrentTimeStamp();
}

// In front of each block; as large as what malloc aligns to.
struct alignas(std::max_align_t) BlockHeader {
    std::size_t size;
};

// The engine asks once, collects garbage and asks again, ten times, before it raises an error.
constexpr int kAttempts = 11;

// What the error itself takes, and how often a script may catch it and go on.
constexpr std::size_t kReserve = std::size_t{64} << 10;
constexpr std::size_t kMostReserve = std::size_t{1} << 20;

constexpr unsigned kCallsPerClock = 256;

// The same for the stack: so many calls, so many bytes.
constexpr int kCallsOfAnError = 8;
constexpr std::size_t kStackReserve = std::size_t{128} << 10;

thread_local std::uintptr_t theStackEnd = 0;
thread_local int theReservedCalls = 0;
thread_local DuktapeHeap* theEnteredHeap = nullptr;

std::uintptr_t GetStackPosition() noexcept {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

BlockHeader* HeaderOf(void* block) noexcept {
    return static_cast<BlockHeader*>(block) - 1;
}

void* AllocateFrom(void* heap, duk_size_t size) {
    return static_cast<DuktapeHeap*>(heap)->Allocate(size);
}

void* ReallocateFrom(void* heap, void* block, duk_size_t size) {
    return static_cast<DuktapeHeap*>(heap)->Reallocate(block, size);
}

void FreeInto(void* heap, void* block) {
    static_cast<DuktapeHeap*>(heap)->Free(block);
}

// Raised outside of any protected call only, where no script runs.
[[noreturn]] void Fail(void*, char const* message) {
    throw std::runtime_error(message ? message : "the script engine failed");
}

} // namespace

extern "C" duk_bool_t VynScriptTimeIsUp(void* heap) {
    return static_cast<DuktapeHeap*>(heap)->IsTimeUp() ? 1 : 0;
}

extern "C" int VynScriptStackIsUsedUp() {
    return DuktapeHeap::IsStackUsedUp() ? 1 : 0;
}

DuktapeHeap::Entry::Entry(DuktapeHeap& heap) noexcept
    : mHeap(heap), mStackBefore(theStackEnd), mHeapBefore(std::exchange(theEnteredHeap, &heap)) {
    std::uintptr_t const here = GetStackPosition();
    theStackEnd = here - std::min<std::uintptr_t>(here, heap.mLimits.stackBytes);
    theReservedCalls = 0;
    if (heap.mDepth++ > 0)
        return;
    heap.mTimeIsUp = false;
    heap.mHasRefusedMemory = false;
}

void DuktapeHeap::StartClock(double seconds) noexcept {
    constexpr double kMostSeconds = 1e9;
    auto const nanos = static_cast<std::uint64_t>(std::clamp(seconds, 0.0, kMostSeconds) * 1e9);
    mDeadline = seconds > 0 ? Now() + HighPrecisionTime::ConvertFromNanos(nanos) : 0;
    mTimeIsUp = false;
    mRefusalsForTime = 0;
}

void DuktapeHeap::StartClockForFailure() noexcept {
    constexpr double kSeconds = 0.1;
    StartClock(kSeconds);
}

DuktapeHeap::Entry::~Entry() {
    theStackEnd = mStackBefore;
    theEnteredHeap = mHeapBefore;
    if (--mHeap.mDepth > 0)
        return;
    mHeap.mDeadline = 0;
    mHeap.mTimeIsUp = false;
    mHeap.mRefusalsForTime = 0;
}

DuktapeHeap::DuktapeHeap(ScriptLimits const& limits, DuktapeEngine& engine)
    : mLimits(limits), mEngine(engine), mMost(limits.memoryBytes) {
    Entry const entry(*this);
    mContext = duk_create_heap(AllocateFrom, ReallocateFrom, FreeInto, this, Fail);
    if (!mContext)
        throw std::bad_alloc();
}

DuktapeHeap::~DuktapeHeap() {
    Entry const entry(*this);
    mDeadline = 0;
    duk_destroy_heap(mContext);
}

DuktapeEngine& DuktapeHeap::Of(duk_hthread* context) noexcept {
    duk_memory_functions functions;
    duk_get_memory_functions(context, &functions);
    return static_cast<DuktapeHeap*>(functions.udata)->mEngine;
}

bool DuktapeHeap::IsTimeUp() noexcept {
    if (mDeadline != 0 && !mTimeIsUp)
        mTimeIsUp = Now() >= mDeadline;
    return mTimeIsUp;
}

// Built-in functions that run for long don't ask for the time, but they allocate or call: each so often is enough.
bool DuktapeHeap::LooksAtTheClock() noexcept {
    if (++mCallsSinceClock < kCallsPerClock)
        return false;
    mCallsSinceClock = 0;
    return IsTimeUp();
}

bool DuktapeHeap::IsStackUsedUp() noexcept {
    std::uintptr_t const here = GetStackPosition();
    if (here < theStackEnd) {
        if (theReservedCalls > 0 && theStackEnd - here < kStackReserve) {
            --theReservedCalls;
            return false;
        }
        theReservedCalls = kCallsOfAnError;
        return true;
    }
    return theEnteredHeap && theEnteredHeap->LooksAtTheClock();
}

bool DuktapeHeap::Refuses(std::size_t size) noexcept {
    if (mRefusalsForTime == 0 && LooksAtTheClock())
        mRefusalsForTime = kAttempts;
    if (mRefusalsForTime > 0) {
        --mRefusalsForTime;
        return true;
    }
    if (size <= mMost && mUsed <= mMost - size) {
        mRefusals = 0;
        return false;
    }
    mHasRefusedMemory = true;
    // The error that comes of it needs memory, too.
    if (++mRefusals % kAttempts == 0 && mMost < mLimits.memoryBytes + kMostReserve)
        mMost += kReserve;
    return true;
}

bool DuktapeHeap::Charge(std::size_t size) noexcept {
    if (mUsed + size > mLimits.memoryBytes) {
        mHasRefusedMemory = true;
        return false;
    }
    mUsed += size;
    return true;
}

void* DuktapeHeap::Allocate(std::size_t size) noexcept {
    if (size == 0 || Refuses(size))
        return nullptr;
    auto* const header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (!header)
        return nullptr;
    header->size = size;
    mUsed += size;
    return header + 1;
}

void* DuktapeHeap::Reallocate(void* block, std::size_t size) noexcept {
    if (!block)
        return Allocate(size);
    if (size == 0) {
        Free(block);
        return nullptr;
    }
    std::size_t const before = HeaderOf(block)->size;
    if (size > before && Refuses(size - before))
        return nullptr;
    auto* const header = static_cast<BlockHeader*>(std::realloc(HeaderOf(block), sizeof(BlockHeader) + size));
    if (!header)
        return nullptr;
    header->size = size;
    mUsed += size - before;
    return header + 1;
}

void DuktapeHeap::Free(void* block) noexcept {
    if (!block)
        return;
    BlockHeader* const header = HeaderOf(block);
    mUsed -= header->size;
    // Whoever gave back what the reserve was for has it again.
    if (mMost > mLimits.memoryBytes && mUsed <= mLimits.memoryBytes / 2)
        mMost = mLimits.memoryBytes;
    std::free(header);
}

} // namespace vynscripting::duktape
