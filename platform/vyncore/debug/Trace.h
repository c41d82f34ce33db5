#pragma once

#include "vyncore/debug/TracePoint.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

/// Tracing: lines of text with a tag, which names a class or an operation, and a level. Complaints have level 0,
/// progress has level 6. A text passes when its level is at most the level set for its tag, or the general one when its
/// tag has none. At the start the general level is 0 and what passes is written to standard error, one line "tag: text"
/// each: control characters other than tabs, line ends included, show there as blanks.
///
/// Tracing never changes what the caller does: it throws nothing, and a text that can't be delivered is lost.
namespace vyncore::debug {

/// Takes a text that passed the filter, as UTF-8. Called on the thread that traces, by several at once; it may trace.
/// What it throws is dropped.
using TraceSink = std::function<void(int level, std::string_view tag, std::string_view text)>;

/// Gives the text to the sink when the filter lets it pass. A null tag or text counts as an empty one.
/// A text that passes may allocate and wait, so the process thread traces only when something is wrong.
/// [any-thread]
VYN_API void Trace(int level, char const* tag, UString const& text) noexcept;

/// The same for a text in UTF-8.
/// [any-thread]
VYN_API void Trace(int level, char const* tag, char const* text) noexcept;

/// Gives a text to the sink under the tag "debug" and level 0, whatever the filter says: for output that somebody asked
/// for. The text is UTF-8; a sink gets it with the line ends that it has.
/// [any-thread]
VYN_API void DebugTrace(std::string_view text) noexcept;

/// Builds and traces a text only when the point is on; makeText gives a UString or a text in UTF-8.
/// [any-thread]
template <class MakeText>
void DebugTrace(TracePoint& point, MakeText&& makeText) {
    if (point.Enabled())
        Trace(point.GetLevel(), point.GetTag(), std::forward<MakeText>(makeText)());
}

/// Whether a text of this tag and level passes. A caller that keeps the answer passes true for cached and asks again
/// when TraceChangeCount has moved; read the count before asking.
/// [any-thread]
VYN_API bool TraceEnabled(char const* tag, int level, bool cached) noexcept;

/// A number that moves whenever an answer of TraceEnabled may have changed. Never 0.
/// [any-thread]
VYN_API std::uint32_t TraceChangeCount() noexcept;

/// Sets the general level; a negative one lets nothing pass.
/// [any-thread]
VYN_API void SetTraceLevel(int level);

/// Sets the level of one tag, in place of the general one.
/// [any-thread]
VYN_API void SetTraceTagLevel(std::string_view tag, int level);

/// Forgets the levels of all tags and sets the general level back to 0.
/// [any-thread]
VYN_API void ResetTraceLevels();

/// Replaces the sink; an empty one brings standard error back. A thread that is tracing may still be inside the old
/// sink when this returns.
/// [any-thread]
VYN_API void SetTraceSink(TraceSink sink);

} // namespace vyncore::debug
