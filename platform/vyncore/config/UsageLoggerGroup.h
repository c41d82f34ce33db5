#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vyncore::config {

/// One record of what was used, filled entry by entry. Made by the application's UsageLogger, which decides what
/// becomes of it; it is complete when the last one who holds it lets go.
class VYN_API UsageLoggerGroup {
public:
    UsageLoggerGroup(UsageLoggerGroup const&) = delete;
    UsageLoggerGroup& operator=(UsageLoggerGroup const&) = delete;
    virtual ~UsageLoggerGroup();

    /// Appends a text in UTF-8 under `key`.
    /// [main-thread]
    virtual void AddString(char const* key, UTF8String const& value) = 0;

    /// Appends a truth value under `key`.
    /// [main-thread]
    virtual void Add(char const* key, bool const& value) = 0;

    /// A pointer would pass for true.
    void Add(char const* key, void const* value) = delete;

protected:
    UsageLoggerGroup();
};

} // namespace vyncore::config
