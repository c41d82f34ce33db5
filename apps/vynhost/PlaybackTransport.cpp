#include "vynhost/PlaybackTransport.h"

#include "vynhost/RenderTransport.h"

namespace vynhost {

int PlaybackTransport::CountSteadySamples(std::int64_t position, int most) const {
    return RenderTransport(mSampleRate, mSong).CountSteadySamples(position, most);
}

// One of its own for each question: a rendering's transport is for one thread.
bool PlaybackTransport::GetPlaybackState(vynaudiofilterhost::PlaybackState& state) {
    RenderTransport transport(mSampleRate, mSong);
    transport.SetPosition(mPosition.load(std::memory_order_relaxed));
    return transport.GetPlaybackState(state);
}

} // namespace vynhost
