#include "vyncore/debug/Trace.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vyncore::debug {
namespace {

struct TraceState {
    std::mutex mutex;
    int level = 0;
    std::map<std::string, int, std::less<>> tagLevels;
    std::shared_ptr<TraceSink const> sink;
};

// Never destroyed, because static objects of an application trace while they go.
TraceState& State() {
    static TraceState& state = *new TraceState;
    return state;
}

std::atomic<std::uint32_t> gChangeCount{1};

// No tag's level lies above it, so that what is off everywhere is turned away without the lock.
std::atomic<int> gHighestLevel{0};

void PublishLevels(TraceState const& state) {
    int highest = state.level;
    for (auto const& tagLevel : state.tagLevels)
        highest = std::max(highest, tagLevel.second);
    gHighestLevel.store(highest, std::memory_order_relaxed);
    // Released, so that whoever sees the new count sees the new level too. A point that has never asked keeps 0.
    if (gChangeCount.fetch_add(1, std::memory_order_release) + 1 == 0)
        gChangeCount.fetch_add(1, std::memory_order_release);
}

bool IsControl(char16_t unit) {
    return (unit < u' ' && unit != u'\t') || (unit >= 0x7F && unit <= 0x9F);
}

void WriteToStandardError(std::string_view tag, std::string_view text) {
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    // Plug-ins' own texts get here: none may forge a line or steer the terminal.
    UString shown = string::UTF8to16(std::string(tag).append(": ").append(text));
    std::replace_if(shown.begin(), shown.end(), IsControl, u' ');
    std::string const line = string::UTF16to8(shown) + '\n';
    // In one piece, so that lines of several threads don't mix.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void Deliver(int level, std::string_view tag, std::string_view text) {
    std::shared_ptr<TraceSink const> sink;
    {
        std::lock_guard const lock(State().mutex);
        sink = State().sink;
    }
    // Outside the lock: a sink may trace.
    if (sink)
        (*sink)(level, tag, text);
    else
        WriteToStandardError(tag, text);
}

char const* OrEmpty(char const* text) {
    return text ? text : "";
}

} // namespace

bool TracePoint::Enabled() noexcept {
    std::uint64_t kept = mKept.load(std::memory_order_relaxed);
    if (kept >> 1 != gChangeCount.load(std::memory_order_relaxed)) {
        std::uint64_t const count = TraceChangeCount();
        kept = count << 1 | static_cast<std::uint64_t>(TraceEnabled(mTag, mLevel, true));
        mKept.store(kept, std::memory_order_relaxed);
    }
    return (kept & 1) != 0;
}

void Trace(int level, char const* tag, UString const& text) noexcept {
    try {
        if (TraceEnabled(tag, level, false))
            Deliver(level, OrEmpty(tag), string::UTF16to8(text));
    } catch (...) {
        // A trace that can't be delivered is lost; the caller's work goes on.
    }
}

void Trace(int level, char const* tag, char const* text) noexcept {
    try {
        if (TraceEnabled(tag, level, false))
            Deliver(level, OrEmpty(tag), OrEmpty(text));
    } catch (...) {
        // As above.
    }
}

void DebugTrace(std::string_view text) noexcept {
    try {
        Deliver(0, "debug", text);
    } catch (...) {
        // As above.
    }
}

bool TraceEnabled(char const* tag, int level, bool /*cached*/) noexcept {
    if (level > gHighestLevel.load(std::memory_order_relaxed))
        return false;
    try {
        TraceState& state = State();
        std::lock_guard const lock(state.mutex);
        auto const found = state.tagLevels.find(std::string_view(OrEmpty(tag)));
        return level <= (found == state.tagLevels.end() ? state.level : found->second);
    } catch (...) {
        return false;
    }
}

std::uint32_t TraceChangeCount() noexcept {
    return gChangeCount.load(std::memory_order_acquire);
}

void SetTraceLevel(int level) {
    TraceState& state = State();
    std::lock_guard const lock(state.mutex);
    state.level = level;
    PublishLevels(state);
}

void SetTraceTagLevel(std::string_view tag, int level) {
    TraceState& state = State();
    std::lock_guard const lock(state.mutex);
    state.tagLevels.insert_or_assign(std::string(tag), level);
    PublishLevels(state);
}

void ResetTraceLevels() {
    TraceState& state = State();
    std::lock_guard const lock(state.mutex);
    state.level = 0;
    state.tagLevels.clear();
    PublishLevels(state);
}

void SetTraceSink(TraceSink sink) {
    std::shared_ptr<TraceSink const> next;
    if (sink)
        next = std::make_shared<TraceSink const>(std::move(sink));
    TraceState& state = State();
    // The old sink goes outside the lock, since what it holds may trace.
    std::lock_guard const lock(state.mutex);
    state.sink.swap(next);
}

} // namespace vyncore::debug
