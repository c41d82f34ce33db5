#pragma once

#include "vynhost/AudioFileWriter.h"
#include "vynhost/AutomationFile.h"
#include "vynhost/FilterPlan.h"
#include "vynhost/LevelMeter.h"
#include "vynhost/MidiSong.h"
#include "vynhost/OfflineRenderer.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/RenderReport.h"
#include "vynhost/RenderSource.h"
#include "vynhost/StateFile.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <optional>

namespace vynhost {

/// What is in the files that a request names beside its audio. A plain record.
struct RenderScore {
    AutomationFile automation;
    MidiSong song; ///< empty without a MIDI file
};

/// One rendering of the source, from its first sample to its last, through a filter of its own into an output file of
/// its own. The output appears with Finish alone, and so does the file of the filter's state.
///
/// Life: made, which opens the files and sets the filter up; Run; Finish.
class RenderPass {
public:
    /// @param request  must outlive the object
    /// @param score    likewise
    /// @param filter   suspended
    /// @param latency  compensates this latency in samples; empty: what the filter says
    /// Throws std::runtime_error for a filter that is no instrument when there is a MIDI file, and what RenderSource,
    /// MakeFilterPlan, OfflineRenderer, AudioFileWriter and the plug-in throw.
    /// [main-thread]
    RenderPass(RenderRequest const& request, RenderScore const& score,
               boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, std::optional<int> latency);

    /// Throws what the plug-in throws besides the failures of the files.
    /// [main-thread]
    RenderOutcome const& Run();

    /// Puts the files in their places and tells what was done.
    /// [main-thread]
    RenderReport Finish();

private:
    TrackRequest MakeTrack() const;
    RenderSetup MakeSetup(MidiSong const& song, std::optional<int> latency);
    void CollectNotes(RenderReport& report) const;

    RenderRequest const& mRequest;
    RenderSource mSource;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> mFilter;
    FilterPlan mPlan;
    std::optional<StateFile> mSavedState;
    OfflineRenderer mRenderer;
    AudioFormat mOutputFormat;
    AudioFileWriter mWriter;
    LevelMeter mMeterOut;
    RenderOutcome mOutcome;
};

} // namespace vynhost
