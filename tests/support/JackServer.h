#pragma once

#include <string>
#include <sys/types.h>

namespace vyntest {

/// A sound server without a sound card, of a name that no other has: 44100 hertz, blocks of 512 samples, two channels
/// each way. As long as the object lives, clients of this process find it as the default server.
class JackServer {
public:
    /// Whether there is such a server to be started.
    /// [main-thread]
    static bool IsInstalled();

    /// Returns when the server takes clients. Throws std::runtime_error when it doesn't within ten seconds.
    /// [main-thread]
    JackServer();
    JackServer(JackServer const&) = delete;
    JackServer& operator=(JackServer const&) = delete;
    /// [main-thread]
    ~JackServer();

    /// Ends the server at once, without a word to its clients.
    /// [main-thread]
    void Kill();

private:
    void WaitUntilReady();
    void End(int signal) noexcept;
    void TidyUp() noexcept;

    std::string const mName;
    bool mWasKilled = false;
    pid_t mProcess = -1;
};

/// Makes sure that this process finds no server for as long as the object lives.
class NoJackServer {
public:
    /// [main-thread]
    NoJackServer();
    NoJackServer(NoJackServer const&) = delete;
    NoJackServer& operator=(NoJackServer const&) = delete;
    /// [main-thread]
    ~NoJackServer();
};

} // namespace vyntest
