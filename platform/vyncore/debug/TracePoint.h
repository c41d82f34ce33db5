#pragma once

#include "vyncore/Export.h"

#include <atomic>
#include <cstdint>

namespace vyncore::debug {

/// One place in the code that can trace: it remembers whether its tag and level are wanted, and asks again only when
/// TraceChangeCount has moved. A point that is off costs one relaxed load of that count and a comparison.
///
/// Meant as a static object beside the code that traces. The tag isn't copied: it has to live as long as the point,
/// which a literal does.
class VYN_API TracePoint {
public:
    /// [any-thread]
    constexpr TracePoint(int level, char const* tag) noexcept : mLevel(level), mTag(tag) {}

    TracePoint(TracePoint const&) = delete;
    TracePoint& operator=(TracePoint const&) = delete;

    /// Whether the text of this point is wanted now. Waits for no one unless a filter has changed since the last call.
    /// [any-thread]
    bool Enabled() noexcept;

    /// [any-thread]
    int GetLevel() const noexcept { return mLevel; }

    /// [any-thread]
    char const* GetTag() const noexcept { return mTag; }

private:
    int const mLevel;
    char const* const mTag;
    std::atomic<std::uint64_t> mKept{0};
};

} // namespace vyncore::debug
