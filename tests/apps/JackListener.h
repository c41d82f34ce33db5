#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <jack/jack.h>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vyntest {

/// A client of the sound server that listens to the two outputs of another one.
/// [main-thread]
class JackListener {
public:
    JackListener() : mClient(jack_client_open("listener", JackNoStartServer, nullptr)) {
        if (!mClient)
            throw std::runtime_error("no server to listen to");
        for (std::size_t channel = 0; channel < mPorts.size(); ++channel)
            mPorts[channel] = jack_port_register(mClient.get(), ("in_" + std::to_string(channel + 1)).c_str(),
                                                 JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
        jack_set_process_callback(mClient.get(), &Process, this);
        jack_activate(mClient.get());
    }

    jack_client_t* GetClient() { return mClient.get(); }

    /// Waits until a whole block of a channel lies this close to a level. False when that takes over ten seconds.
    bool Hears(std::size_t channel, float level) {
        return WaitUntil([&] {
            // The other client may come and go meanwhile.
            jack_connect(mClient.get(), ("vynhost:out_" + std::to_string(channel + 1)).c_str(),
                         jack_port_name(mPorts[channel]));
            return IsNear(mLow[channel], level) && IsNear(mHigh[channel], level);
        });
    }

    /// Waits until a port is connected with exactly these: the server shows news with its next block. False when that
    /// takes over ten seconds.
    bool Sees(char const* port, std::vector<std::string> const& sources) {
        return WaitUntil([&] { return FindSources(port) == sources; });
    }

private:
    struct Close {
        void operator()(jack_client_t* client) const { jack_client_close(client); }
    };

    bool WaitUntil(std::function<bool()> const& holds) {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (std::chrono::steady_clock::now() < deadline) {
            if (mBlock.try_acquire_for(std::chrono::milliseconds(100)) && holds())
                return true;
        }
        return false;
    }

    std::vector<std::string> FindSources(char const* port) {
        std::vector<std::string> names;
        char const** const sources =
            jack_port_get_all_connections(mClient.get(), jack_port_by_name(mClient.get(), port));
        for (char const** source = sources; source && *source; ++source)
            names.emplace_back(*source);
        jack_free(sources);
        return names;
    }

    static bool IsNear(float sample, float level) { return std::abs(sample - level) < 1e-3f; }

    static int Process(jack_nframes_t frames, void* listener) {
        auto& self = *static_cast<JackListener*>(listener);
        for (std::size_t channel = 0; channel < self.mPorts.size(); ++channel) {
            auto const* const samples = static_cast<float*>(jack_port_get_buffer(self.mPorts[channel], frames));
            auto const [low, high] = Measure(samples, frames);
            self.mLow[channel] = low;
            self.mHigh[channel] = high;
        }
        self.mBlock.release();
        return 0;
    }

    // The server has its clients run one after the other, by means that ThreadSanitizer doesn't see.
    __attribute__((no_sanitize("thread"))) static std::pair<float, float> Measure(float const* samples,
                                                                                  jack_nframes_t frames) {
        float low = samples[0];
        float high = samples[0];
        for (jack_nframes_t i = 1; i < frames; ++i) {
            low = samples[i] < low ? samples[i] : low;
            high = samples[i] > high ? samples[i] : high;
        }
        return {low, high};
    }

    std::array<jack_port_t*, 2> mPorts{};
    std::array<std::atomic<float>, 2> mLow{};
    std::array<std::atomic<float>, 2> mHigh{};
    std::counting_semaphore<> mBlock{0};
    std::unique_ptr<jack_client_t, Close> mClient;
};

} // namespace vyntest
