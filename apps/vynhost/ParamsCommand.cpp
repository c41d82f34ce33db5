#include "vynhost/ParamsCommand.h"

#include "vynhost/ParamsReport.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginFacts.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/Session.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

namespace vynhost {

std::string RunParams(PluginRequest const& request) {
    Session const session;
    return CallPlugin(ExitStatus::kPluginRefused, request.modulePath, [&] {
        using vyncore::string::UTF16to8;
        PluginSelection const plugin(request.modulePath, request.classID);
        auto const filter = plugin.CreateFilter();
        // The range of a frequency may depend on it.
        filter->SetSampleRate(kFactsSampleRate);
        std::vector<ParameterFacts> const parameters = GatherParameters(*filter);
        std::string const title = UTF16to8(filter->GetDisplayName()) + "  " + UTF16to8(filter->GetID());
        return request.json ? FormatJSON(parameters) : FormatTable(title, parameters);
    });
}

} // namespace vynhost
