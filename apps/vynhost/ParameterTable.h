#pragma once

#include "vynhost/NameLookup.h"
#include "vynhost/ParameterScale.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

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

    /// Finds the parameter and the value; NameLookup::Find and ParameterScale::Read. What a user should know of it is
    /// kept for GetNotes.
    /// [main-thread]
    std::pair<int, ParameterValue> Read(std::string const& nameOrIndex, std::string const& value);

    /// Of each parameter at most one of a kind.
    /// [main-thread]
    std::vector<std::string> const& GetNotes() const noexcept { return mNotes; }

    /// Throws std::runtime_error when the filter tells nothing of the parameter.
    /// [main-thread]
    ParameterScale const& GetScale(int parameter);

private:
    void Note(int parameter, std::string const& text, ParameterValue const& value);

    vynaudiofilterhost::AudioFilter& mFilter;
    NameLookup mNames;
    std::map<int, ParameterScale> mScales; ///< of the parameters that were asked for
    std::set<int> mRead;                   ///< that have been read
    std::set<int> mMoved;                  ///< of which a value between steps has been read
    std::vector<std::string> mNotes;
};

} // namespace vynhost
