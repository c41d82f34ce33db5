#pragma once

#include "vynscripting/ScriptEngine.h"

#include <cstddef>
#include <cstdint>

struct duk_hthread;

namespace vynscripting::duktape {

class DuktapeEngine;

/// One heap of the engine, within the limits of memory, stack and time that scripts have. Scripts run inside an Entry
/// alone.
class DuktapeHeap {
public:
    /// Brackets the engine's work on the calling thread, whose stack is counted from here on. Entries nest.
    class Entry {
    public:
        /// [main-thread]
        explicit Entry(DuktapeHeap& heap) noexcept;
        Entry(Entry const&) = delete;
        Entry& operator=(Entry const&) = delete;
        /// [main-thread]
        ~Entry();

    private:
        DuktapeHeap& mHeap;
        std::uintptr_t const mStackBefore;
        DuktapeHeap* const mHeapBefore;
    };

    /// @param engine  whom Of gives
    /// Throws std::bad_alloc when the memory doesn't suffice for the engine's own objects.
    /// [main-thread]
    DuktapeHeap(ScriptLimits const& limits, DuktapeEngine& engine);
    DuktapeHeap(DuktapeHeap const&) = delete;
    DuktapeHeap& operator=(DuktapeHeap const&) = delete;
    /// Runs what is left to finalize.
    /// [main-thread]
    ~DuktapeHeap();

    /// The engine of a context, which may be that of any function that runs in it.
    /// [main-thread]
    static DuktapeEngine& Of(duk_hthread* context) noexcept;

    /// [main-thread]
    duk_hthread* GetContext() const noexcept { return mContext; }

    /// [main-thread]
    ScriptLimits const& GetLimits() const noexcept { return mLimits; }

    /// Lets the time run, from now to the end of the outermost entry.
    /// [main-thread]
    void StartClock() noexcept { StartClock(mLimits.seconds); }

    /// Lets a time of its own run for what is still to be done about a failure: a tenth of a second at most.
    /// [main-thread]
    void StartClockForFailure() noexcept;

    /// Whether work is under way.
    /// [main-thread]
    bool IsEntered() const noexcept { return mDepth > 0; }

    /// Whether the time has run out. Once it has, that stays until the outermost entry ends.
    /// [main-thread]
    bool IsTimeUp() noexcept;

    /// Whether memory was refused since the outermost entry began.
    /// [main-thread]
    bool HasRefusedMemory() const noexcept { return mHasRefusedMemory; }

    /// Whether the stack of the calling thread is used up as far as the innermost entry allows.
    /// [main-thread]
    static bool IsStackUsedUp() noexcept;

    /// Counts what the host holds for a script, beside what the script holds itself. False, and nothing is counted,
    /// when that goes beyond the limit.
    /// [main-thread]
    bool Charge(std::size_t size) noexcept;

    /// Counts it no more.
    /// [main-thread]
    void Discharge(std::size_t size) noexcept { mUsed -= size; }

    /// What the engine takes its memory from: as malloc, realloc and free of the C library.
    /// [main-thread]
    void* Allocate(std::size_t size) noexcept;
    void* Reallocate(void* block, std::size_t size) noexcept;
    void Free(void* block) noexcept;

private:
    void StartClock(double seconds) noexcept;
    bool Refuses(std::size_t size) noexcept;
    bool LooksAtTheClock() noexcept;

    ScriptLimits const mLimits;
    DuktapeEngine& mEngine;
    duk_hthread* mContext = nullptr;

    std::size_t mUsed = 0;
    std::size_t mMost; ///< of mUsed: the limit, and a little more behind a refusal
    int mRefusals = 0; ///< in a row
    bool mHasRefusedMemory = false;

    int mDepth = 0;
    std::uint64_t mDeadline = 0; ///< 0: none
    bool mTimeIsUp = false;
    unsigned mCallsSinceClock = 0;
    int mRefusalsForTime = 0; ///< still to come
};

} // namespace vynscripting::duktape
