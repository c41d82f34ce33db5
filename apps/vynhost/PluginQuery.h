#pragma once

#include "vynhost/PluginCall.h"
#include "vynhost/PluginRequest.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/Session.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

#include <string>

namespace vynhost {

/// A command that tells something of a plug-in: returns what `ask` makes of the class that is asked for. Throws
/// CommandError.
/// [main-thread]
template <class Ask>
std::string AskPlugin(PluginRequest const& request, Ask const& ask) {
    Session const session;
    return CallPlugin(ExitStatus::kPluginRefused, request.modulePath,
                      [&] { return ask(PluginSelection(request.modulePath, request.classID)); });
}

/// The line above a table of what a filter has.
/// [main-thread]
inline std::string GetTitle(vynaudiofilterhost::AudioFilter const& filter) {
    using vyncore::string::UTF16to8;
    return UTF16to8(filter.GetDisplayName()) + "  " + UTF16to8(filter.GetID());
}

} // namespace vynhost
