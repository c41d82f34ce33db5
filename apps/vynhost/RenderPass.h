#pragma once

#include "vynhost/AudioFileReader.h"
#include "vynhost/AudioFileWriter.h"
#include "vynhost/FilterPlan.h"
#include "vynhost/LevelMeter.h"
#include "vynhost/OfflineRenderer.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/RenderReport.h"
#include "vynhost/SideChainFile.h"
#include "vynhost/StateFile.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <optional>

namespace vynhost {

/// One rendering of the input file, and of the side chain's beside it, from its first sample to its last, through a
/// filter of its own into an output file of its own. The output appears with Finish alone, and so does the file of the
/// filter's state.
///
/// Life: made, which opens the files and sets the filter up; Run; Finish.
class RenderPass {
public:
    /// @param request     must outlive the object
    /// @param automation  what is in the file that the request names
    /// @param filter      new and suspended
    /// @param latency     compensates this latency in samples; empty: what the filter says
    /// Throws what AudioFileReader, MakeFilterPlan, OfflineRenderer, AudioFileWriter and the plug-in throw.
    /// [main-thread]
    RenderPass(RenderRequest const& request, AutomationFile const& automation,
               boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter, std::optional<int> latency);

    /// Throws what the plug-in throws besides the failures of the files.
    /// [main-thread]
    RenderOutcome const& Run();

    /// Puts the files in their places and tells what was done.
    /// [main-thread]
    RenderReport Finish();

private:
    RenderSetup MakeSetup(std::optional<int> latency);
    void CollectNotes(RenderReport& report) const;

    RenderRequest const& mRequest;
    AudioFileReader mReader;
    std::optional<SideChainFile> mSideChain;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> mFilter;
    FilterPlan mPlan;
    std::optional<StateFile> mSavedState;
    OfflineRenderer mRenderer;
    AudioFormat mOutputFormat;
    AudioFileWriter mWriter;
    LevelMeter mMeterIn;
    LevelMeter mMeterOut;
    RenderOutcome mOutcome;
};

} // namespace vynhost
