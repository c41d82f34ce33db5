#include "vynhost/ParamsCommand.h"

#include "vynhost/ParamsReport.h"
#include "vynhost/PluginFacts.h"
#include "vynhost/PluginQuery.h"

namespace vynhost {

std::string RunParams(PluginRequest const& request) {
    return AskPlugin(request, [&](PluginSelection const& plugin) {
        auto const filter = plugin.CreateFilter();
        // The range of a frequency may depend on it.
        filter->SetSampleRate(kFactsSampleRate);
        std::vector<ParameterFacts> const parameters = GatherParameters(*filter);
        return request.json ? FormatJSON(parameters) : FormatTable(GetTitle(*filter), parameters);
    });
}

} // namespace vynhost
