#pragma once

#include "vynhost/StateFile.h"

#include <boost/signals2/connection.hpp>

#include <mutex>
#include <set>
#include <string>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// The state that a filter has when its editing ends, for a file. The filter belongs to the caller and must outlive it.
///
/// Many plug-ins keep their state in the part that works on audio, which hears of edits with a block. So a suspended
/// filter is given a block of silence with what was edited, before its state is taken.
class EditedState {
public:
    /// Hears of the filter's edits from now on; touches no file yet.
    /// [main-thread]
    EditedState(vynaudiofilterhost::AudioFilter& filter, std::string path);
    EditedState(EditedState const&) = delete;
    EditedState& operator=(EditedState const&) = delete;

    /// Takes the state and writes it, as StateFile does; throws what the plug-in throws as well. The filter has a
    /// sample rate and a block size.
    /// [main-thread]
    void Save();

private:
    void HearValue(int index);
    void Settle();

    vynaudiofilterhost::AudioFilter& mFilter;
    StateFile mFile;
    std::mutex mMutex; ///< plug-ins report edits on any thread
    std::set<int> mEdited;
    boost::signals2::scoped_connection mConnection; ///< goes first
};

} // namespace vynhost
