#pragma once

#include "vynhost/FilterConnections.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/RenderReport.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

class PluginSelection;
struct RenderRequest;

/// What a script works on: the one plug-in that is open, if there is one, and what is known of others. It goes before
/// the Session does. Failures are CommandErrors where nothing else is said.
///
/// Rendering leaves the filter as it was. A filter whose buses are still those that it came with, and whose channel
/// maps are the first ones, is fitted to each file. As soon as either has been changed they are what the file is
/// rendered through; the buses are connected by best fit as long as the maps are the first ones.
class ScriptHost {
public:
    /// @param script     the path of the script, which nothing is rendered over
    /// @param arguments  of the script
    ScriptHost(std::string script, std::vector<std::string> arguments);
    ScriptHost(ScriptHost const&) = delete;
    ScriptHost& operator=(ScriptHost const&) = delete;
    /// [main-thread]
    ~ScriptHost();

    /// Opens a plug-in, as PluginSelection finds it, in place of the one that is open; that one stays when this fails.
    /// @param classID  empty when the module's only class is meant
    /// [main-thread]
    void Open(std::string const& plugin, std::string const& classID = {});

    /// [main-thread]
    void Close();

    /// Null when no plug-in is open; suspended otherwise.
    /// [main-thread]
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> const& GetFilter() const noexcept { return mFilter; }

    /// Sends an audio file through the filter, with the values that it has, into a WAV file. Throws std::runtime_error
    /// when no plug-in is open; the output file is as it was when anything fails.
    /// [main-thread]
    RenderReport Render(std::string const& inputPath, std::string const& outputPath);

    /// From the stored catalogue, which is loaded when it is asked for first.
    /// [main-thread]
    KnownFilters const& GetCatalogue();

    /// [main-thread]
    std::vector<std::string> const& GetArguments() const noexcept { return mArguments; }

private:
    RenderRequest MakeRequest(std::string const& inputPath, std::string const& outputPath);
    RenderReport RenderInStep(RenderRequest const& request);
    void TellValues(vynaudiofilterhost::AudioFilter& filter);
    void PutBack(FilterConnections const& connections);

    std::string const mScript;
    std::vector<std::string> const mArguments;
    std::string mName; ///< of the plug-in, as the user named it
    std::unique_ptr<PluginSelection> mPlugin;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> mFilter; ///< goes before its module does
    std::optional<FilterConnections> mFirst;                       ///< of the filter, before the script had it
    std::vector<float> mHeard;                                     ///< by parameter, what the filter has rendered with
    std::optional<KnownFilters> mCatalogue;
};

} // namespace vynhost
