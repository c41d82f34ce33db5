#pragma once

#include "vyncore/config/UsageLoggerGroup.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <memory>

namespace vyncore::config {

/// Where an application learns what of it is used. There is none unless the application sets one, and what is to be
/// logged is lost then.
class VYN_API UsageLogger {
public:
    UsageLogger(UsageLogger const&) = delete;
    UsageLogger& operator=(UsageLogger const&) = delete;
    virtual ~UsageLogger();

    /// The application's logger; null when there is none.
    /// [main-thread]
    static std::shared_ptr<UsageLogger> Get();

    /// Takes the place of the logger before; null for none.
    /// [main-thread]
    static void Set(std::shared_ptr<UsageLogger> logger);

    /// Opens a record. Null when the application doesn't want it.
    /// @param library   who reports
    /// @param kind      what was used, in the reporter's words
    /// @param name      names such records among those of all reporters
    /// @param argument  the user's own addition, may be empty
    /// [main-thread]
    virtual std::shared_ptr<UsageLoggerGroup> OpenGroup(UTF8String const& library, UTF8String const& kind,
                                                        UTF8String const& name, UTF8String const& argument) = 0;

protected:
    UsageLogger();
};

} // namespace vyncore::config
