#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vynhost {

/// What became of a module that was opened in a child.
struct ScanOutcome {
    enum class Verdict {
        kFiled,   ///< there is something to file
        kRefused, ///< the module is none, or has nothing to offer
        kBanned,  ///< the module took its process down, or would not come to an end
    };

    std::size_t job = 0; ///< place in the list of modules
    Verdict verdict = Verdict::kRefused;
    std::string reason = {};               ///< for a person, goes on after "it "; may be empty when filed
    std::string configuration = {};        ///< when filed: for PluginModuleInfoManager::AddConfiguration
    std::vector<std::string> filters = {}; ///< when filed: unique IDs
    double seconds = 0.0;
};

} // namespace vynhost
