#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <string>

namespace vynaudiofilterhost {
class AudioFilter;
class PluginModule;
} // namespace vynaudiofilterhost

namespace vynhost {

struct FoundPlugin;

/// One class of one plug-in module, as the user chose it, from which filters are made. It holds the module. It goes
/// before the Session does. All failures are CommandErrors that name the module.
class PluginSelection {
public:
    /// Opens the module and finds the class.
    /// @param modulePath  a module file or a bundle's folder; or the name or ID of a plug-in, as FindPlugin takes them
    /// @param classID     as the library gives it, or without the technology in front, in any letter case; empty when
    ///                    the module has only one. An ID that doesn't fit is answered with those that do.
    /// [main-thread]
    PluginSelection(std::string const& modulePath, std::string const& classID);
    /// Opens the module of a plug-in that was found, be it banned or not.
    /// [main-thread]
    explicit PluginSelection(FoundPlugin const& found);
    /// [main-thread]
    ~PluginSelection();

    /// A new, suspended filter; never null.
    /// [main-thread]
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> CreateFilter() const;

    /// Where the class comes from.
    /// [main-thread]
    vynaudiofilterhost::PluginLocator GetLocator() const;

private:
    void Open(FoundPlugin const& found);

    std::string mModulePath;
    boost::intrusive_ptr<vynaudiofilterhost::PluginModule> mModule;
    vyncore::UString mClassID;
};

} // namespace vynhost
