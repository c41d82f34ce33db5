#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// A set of the numbers 0 to size - 1, filled by any thread and emptied by one, in ascending order.
///
/// A tree of 64-bit words, one bit per number at the bottom and one bit per word above: emptying it costs what is in
/// it, and looking into an empty set of any size costs one load.
///
/// Thread safety: Insert from any thread; IsEmpty and TakeAll from one at a time. A number that is inserted while
/// TakeAll runs is taken by this run or by the next, never lost, and what the inserting thread wrote before is visible
/// to the visitor. Nothing here waits or allocates after construction.
class AtomicIndexSet {
public:
    explicit AtomicIndexSet(std::size_t size = 0) {
        do {
            size = (size + 63) / 64;
            mLevels.emplace_back(std::make_unique<Word[]>(size > 0 ? size : 1));
        } while (size > 1);
        mTop = mLevels.back().get();
    }

    /// Puts the number into the set; one that is there already stays.
    /// [any-thread]
    void Insert(std::size_t number) noexcept {
        // From the bottom up: whoever finds a bit above finds what it stands for below.
        for (auto const& words : mLevels) {
            words[number / 64].fetch_or(std::uint64_t{1} << (number % 64), std::memory_order_acq_rel);
            number /= 64;
        }
    }

    /// [any-thread]
    bool IsEmpty() const noexcept { return mTop->load(std::memory_order_relaxed) == 0; }

    /// Empties the set and hands each number to visit, ascending. A number may be inserted again from within.
    /// [any-thread]
    template <class Visitor>
    void TakeAll(Visitor&& visit) {
        if (!IsEmpty())
            TakeWord(mLevels.size() - 1, 0, visit);
    }

private:
    using Word = std::atomic<std::uint64_t>;

    template <class Visitor>
    void TakeWord(std::size_t level, std::size_t place, Visitor& visit) {
        // The word above has been emptied before this one, so an insertion between the two is seen by the next run.
        std::uint64_t bits = mLevels[level][place].exchange(0, std::memory_order_acq_rel);
        for (; bits != 0; bits &= bits - 1) {
            std::size_t const number = place * 64 + static_cast<std::size_t>(std::countr_zero(bits));
            if (level == 0)
                visit(number);
            else
                TakeWord(level - 1, number, visit);
        }
    }

    std::vector<std::unique_ptr<Word[]>> mLevels; ///< bottom first; the last level is one word
    Word* mTop;
};

} // namespace vynaudiofilterhost::vst3
