#include "vynhost/JackPlayer.h"

#include <algorithm>
#include <chrono>
#include <jack/jack.h>
#include <stdexcept>
#include <thread>
#include <utility>

namespace vynhost {

namespace {

// What cannot be connected is told by the object itself.
void SilenceMessages() {
    jack_set_error_function([](char const*) {});
    jack_set_info_function([](char const*) {});
}

// The ports of the sound card that take sound, in the server's order.
std::vector<std::string> FindPlaybackPorts(jack_client_t* client) {
    std::vector<std::string> names;
    char const** const ports =
        jack_get_ports(client, nullptr, JACK_DEFAULT_AUDIO_TYPE, JackPortIsPhysical | JackPortIsInput);
    for (char const** port = ports; port && *port; ++port)
        names.emplace_back(*port);
    jack_free(ports);
    return names;
}

} // namespace

struct JackPlayer::Callbacks {
    static JackPlayer& Self(void* player) { return *static_cast<JackPlayer*>(player); }

    static int Process(jack_nframes_t samples, void* player) {
        Self(player).Process(static_cast<int>(samples));
        return 0;
    }
    static int BlockSizeChanged(jack_nframes_t samples, void* player) {
        Self(player).mBlockSize = static_cast<int>(samples);
        return 0;
    }
    static int SampleRateChanged(jack_nframes_t hertz, void* player) {
        Self(player).mSampleRate = static_cast<int>(hertz);
        return 0;
    }
    static void Ended(jack_status_t, char const*, void* player) { Self(player).mHasEnded = true; }
};

void JackPlayer::Close::operator()(jack_client_t* client) const noexcept {
    jack_client_close(client);
}

JackPlayer::JackPlayer(std::string const& name) {
    SilenceMessages();
    auto const longest = static_cast<std::size_t>(jack_client_name_size()) - 1;
    jack_status_t status{};
    mClient.reset(jack_client_open(name.substr(0, longest).c_str(), JackNoStartServer, &status));
    if (!mClient)
        throw std::runtime_error((status & JackServerFailed) != 0 ? "no JACK server runs"
                                                                  : "the JACK server refuses the connection");
    mSampleRate = static_cast<int>(jack_get_sample_rate(mClient.get()));
    mBlockSize = static_cast<int>(jack_get_buffer_size(mClient.get()));
    jack_set_process_callback(mClient.get(), &Callbacks::Process, this);
    jack_set_buffer_size_callback(mClient.get(), &Callbacks::BlockSizeChanged, this);
    jack_set_sample_rate_callback(mClient.get(), &Callbacks::SampleRateChanged, this);
    jack_on_info_shutdown(mClient.get(), &Callbacks::Ended, this);
}

JackPlayer::~JackPlayer() {
    Stop();
}

void JackPlayer::Start(int channels, Render render) {
    Stop();
    mRender = std::move(render);
    mStartedRate = GetSampleRate();
    mStartedBlockSize = GetBlockSize();
    RegisterPorts(channels);
    mMayRender = true;
    mIsActive = !HasEnded() && jack_activate(mClient.get()) == 0;
    if (!mIsActive) {
        Stop();
        throw std::runtime_error("the JACK server refuses to play");
    }
    Connect();
}

void JackPlayer::Stop() noexcept {
    // The thread is ended wherever it waits next: not inside a plug-in, which may be in the middle of anything.
    mMayRender = false;
    while (mIsInside)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (mIsActive && !HasEnded())
        jack_deactivate(mClient.get());
    mIsActive = false;
}

void JackPlayer::Process(int samples) noexcept {
    // Each side says what it does before it looks at the other, so that Stop and this cannot miss each other.
    mIsInside = true;
    if (mMayRender) {
        std::ranges::transform(mPorts, mBuffers.begin(), [samples](jack_port_t* port) {
            return static_cast<float*>(jack_port_get_buffer(port, static_cast<jack_nframes_t>(samples)));
        });
        if (samples <= mStartedBlockSize)
            mRender(mBuffers.data(), samples);
        else
            std::ranges::for_each(mBuffers, [samples](float* buffer) { std::fill_n(buffer, samples, 0.0f); });
    }
    mIsInside = false;
}

void JackPlayer::RegisterPorts(int channels) {
    auto const wanted = static_cast<std::size_t>(channels);
    for (; mPorts.size() > wanted; mPorts.pop_back())
        jack_port_unregister(mClient.get(), mPorts.back());
    while (mPorts.size() < wanted) {
        std::string const name = "out_" + std::to_string(mPorts.size() + 1);
        jack_port_t* const port =
            jack_port_register(mClient.get(), name.c_str(), JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
        if (!port)
            throw std::runtime_error("the JACK server has no ports for " + std::to_string(channels) + " channels");
        mPorts.push_back(port);
    }
    mBuffers.resize(wanted);
}

// Mono goes to both sides; otherwise each channel has a port of its own, as far as there are ports.
void JackPlayer::Connect() {
    std::vector<std::string> const sinks = FindPlaybackPorts(mClient.get());
    bool const mono = mPorts.size() == 1;
    std::size_t const count = std::min(sinks.size(), std::max(mPorts.size(), std::size_t{2}));
    mConnectedChannels = static_cast<int>(std::min(count, mPorts.size()));
    for (std::size_t sink = 0; sink < count; ++sink)
        jack_connect(mClient.get(), jack_port_name(mPorts[mono ? 0 : sink]), sinks[sink].c_str());
}

} // namespace vynhost
