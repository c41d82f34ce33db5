#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/xml/AbstractParseHandler.h"

#include <cstddef>

namespace vyncore::xml {

/// The largest file that is parsed.
constexpr std::size_t kMostFileBytes = std::size_t{64} << 20;

/// Tells a handler what an XML file holds. Belongs to whoever asked GetParser for it; the handler outlives it.
///
/// The file is UTF-8, or UTF-16 with a byte order mark. A document type is passed over: no entity is expanded, and a
/// reference to one is an error. Elements may be nested as deep as they like.
class VYN_API Parser {
public:
    /// What Parse may give.
    enum Result : int { kSuccess = 0, kUnreadable = 1, kMalformed = 2 };

    /// [any-thread]
    explicit Parser(AbstractParseHandler& handler) : mHandler(handler) {}

    /// 0 when the handler was told everything. Otherwise the file can't be read (there is none, it is none, it is
    /// larger than kMostFileBytes), or it is no XML, whole; the handler was told nothing then. Throws what the handler
    /// throws.
    /// [any-thread]
    int Parse(UString const& path) const;

    /// The same with a document that is at hand.
    /// [any-thread]
    int ParseText(UTF8String text) const;

private:
    AbstractParseHandler& mHandler;
};

/// [any-thread]
VYN_API Parser GetParser(AbstractParseHandler& handler);

} // namespace vyncore::xml
