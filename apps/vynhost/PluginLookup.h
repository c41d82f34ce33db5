#pragma once

#include <string>

namespace vynhost {

/// A plug-in as it can be opened.
struct FoundPlugin {
    std::string modulePath; ///< a module file or a bundle's folder
    std::string classID;    ///< empty when the module's only class is meant
};

/// Finds the plug-in that a user names: by the path of its module, by its unique ID, in any letter case and with or
/// without the technology in front, or by its display name. Names and IDs are those of the stored catalogue, which is
/// loaded when it is needed.
/// @param classID  which plug-in of a module that is named by its path; empty when it has only one
/// Throws CommandError, with the plug-ins to choose from, when there is none or there are several, and when its module
/// is banned.
/// [main-thread]
FoundPlugin FindPlugin(std::string const& plugin, std::string const& classID);

} // namespace vynhost
