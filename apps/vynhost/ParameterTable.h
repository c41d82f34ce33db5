#pragma once

#include "vynhost/NameLookup.h"
#include "vynhost/ParameterScale.h"

#include <map>
#include <string>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// The parameters of a filter, as a user names and sets them. The filter belongs to the caller and must outlive it.
class ParameterTable {
public:
    /// Throws what the plug-in throws, as all of it does.
    /// [main-thread]
    explicit ParameterTable(vynaudiofilterhost::AudioFilter& filter);

    /// The index of the parameter; NameLookup::Find.
    /// [main-thread]
    int Find(std::string const& nameOrIndex) const { return mNames.Find(nameOrIndex); }

    /// Throws std::runtime_error when the filter tells nothing of the parameter.
    /// [main-thread]
    ParameterScale const& GetScale(int parameter);

private:
    vynaudiofilterhost::AudioFilter& mFilter;
    NameLookup mNames;
    std::map<int, ParameterScale> mScales; ///< of the parameters that were asked for
};

} // namespace vynhost
