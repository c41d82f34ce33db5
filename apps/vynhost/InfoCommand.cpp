#include "vynhost/InfoCommand.h"

#include "vynhost/InfoReport.h"
#include "vynhost/PluginQuery.h"

namespace vynhost {

std::string RunInfo(PluginRequest const& request) {
    return AskPlugin(request, [&](PluginSelection const& plugin) {
        PluginFacts const facts = GatherFacts(plugin);
        return request.json ? FormatJSON(facts) : FormatTable(facts);
    });
}

} // namespace vynhost
