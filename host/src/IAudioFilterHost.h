#pragma once

#include "vynaudiofilterhost/PlaybackState.h"
#include "vyncore/Export.h"

namespace vynaudiofilterhost {

/// What a filter asks the embedding application for. The application implements it, owns it, keeps it alive as long as
/// a filter knows it, and hands it over with AudioFilter::SetAudioFilterHost.
class VYN_API IAudioFilterHost {
public:
    IAudioFilterHost() = default;
    IAudioFilterHost(IAudioFilterHost const&) = default;
    IAudioFilterHost& operator=(IAudioFilterHost const&) = default;

    /// Fills in the transport at the start of the present block; fields left alone keep their sane prefill.
    /// True when the record was filled, false when there is no transport to tell of.
    /// [process-thread | main-thread]
    virtual bool GetPlaybackState(PlaybackState& state) = 0;

protected:
    virtual ~IAudioFilterHost() = default;
};

} // namespace vynaudiofilterhost
