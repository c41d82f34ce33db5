#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include <string>
#include <vector>

namespace vynhost {

/// What a scan says of one module.
struct ScanRow {
    enum class Verdict {
        kFiled,    ///< opened, and in the inventory since
        kKnown,    ///< in the inventory, and its file is the same
        kBanned,   ///< on the ban list, since this scan or before
        kRefused,  ///< no plug-in, found out in this scan or before
        kVanished, ///< was in the inventory, and its file is gone
    };

    vynaudiofilterhost::PluginLocator module = {};
    Verdict verdict = Verdict::kKnown;
    std::string reason = {};               ///< goes on after "it "; may be empty
    double seconds = 0.0;                  ///< that the module took in this scan
    std::vector<std::string> filters = {}; ///< unique IDs
};

struct ScanReport {
    double seconds = 0.0;
    std::vector<ScanRow> rows = {};
};

/// One JSON document, with a line break behind it.
/// [any-thread]
std::string FormatJSON(ScanReport const& report);

/// A table for a person.
/// [any-thread]
std::string FormatTable(ScanReport const& report);

} // namespace vynhost
