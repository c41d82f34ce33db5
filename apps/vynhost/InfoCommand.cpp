#include "vynhost/InfoCommand.h"

#include "vynhost/InfoReport.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/Session.h"

namespace vynhost {

std::string RunInfo(PluginRequest const& request) {
    Session const session;
    return CallPlugin(ExitStatus::kPluginRefused, request.modulePath, [&] {
        PluginFacts const facts = GatherFacts(PluginSelection(request.modulePath, request.classID));
        return request.json ? FormatJSON(facts) : FormatTable(facts);
    });
}

} // namespace vynhost
