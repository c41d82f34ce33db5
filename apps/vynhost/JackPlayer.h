#pragma once

#include <jack/types.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vynhost {

/// Sound out through the JACK server: a client of it whose outputs lead to the playback ports of the sound card. It
/// never starts a server.
///
/// Life: made, which connects to the server; Start and Stop, any number of times. A server that ends or lets go of the
/// client ends the sound and nothing else.
///
/// Thread safety: the server's thread is inside `render` between Start and Stop alone, one call at a time. It is never
/// there when the server sends it away, so that whatever `render` calls is left as it likes to be.
class JackPlayer {
public:
    /// Fills channels[channel][sample] with the next samples. Throws nothing.
    using Render = std::function<void(float* const* channels, int samples)>;

    /// @param name  that the client would like to have
    /// Throws std::runtime_error, with a reason for the user, when no server runs or it refuses.
    /// [main-thread]
    explicit JackPlayer(std::string const& name);
    JackPlayer(JackPlayer const&) = delete;
    JackPlayer& operator=(JackPlayer const&) = delete;
    /// [main-thread]
    ~JackPlayer();

    /// The server's, in hertz.
    /// [any-thread]
    int GetSampleRate() const noexcept { return mSampleRate.load(); }

    /// The server's, in samples.
    /// [any-thread]
    int GetBlockSize() const noexcept { return mBlockSize.load(); }

    /// Calls `render` on the server's thread from now on, for as many samples as the block size is now, or fewer.
    /// Throws std::runtime_error, with a reason for the user, when the server refuses.
    /// @param channels  at least 1
    /// [main-thread]
    void Start(int channels, Render render);

    /// Returns when nobody is inside `render` any more. May be called at any time.
    /// [main-thread]
    void Stop() noexcept;

    /// How many channels Start could connect with the sound card.
    /// [main-thread]
    int GetConnectedChannels() const noexcept { return mConnectedChannels; }

    /// Whether the server's rate or block size is no longer what it was at Start: there may be no sound then.
    /// [main-thread]
    bool HasChanged() const noexcept { return GetSampleRate() != mStartedRate || GetBlockSize() != mStartedBlockSize; }

    /// Whether the server has gone, or has let go of the client: there is no sound any more.
    /// [any-thread]
    bool HasEnded() const noexcept { return mHasEnded.load(); }

private:
    struct Close {
        void operator()(jack_client_t* client) const noexcept;
    };
    struct Callbacks;

    void Process(int samples) noexcept;
    void RegisterPorts(int channels);
    void Connect();

    std::atomic<int> mSampleRate = 0;
    std::atomic<int> mBlockSize = 0;
    std::atomic<bool> mHasEnded = false;
    std::atomic<bool> mMayRender = false;
    std::atomic<bool> mIsInside = false; ///< the server's thread, in Process

    // Changed only while the server's thread isn't inside.
    Render mRender;
    std::vector<jack_port_t*> mPorts;
    std::vector<float*> mBuffers;
    int mStartedRate = 0;
    int mStartedBlockSize = 0;

    int mConnectedChannels = 0;
    bool mIsActive = false;

    std::unique_ptr<jack_client_t, Close> mClient;
};

} // namespace vynhost
