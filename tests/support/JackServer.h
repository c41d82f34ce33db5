#pragma once

#include <string>
#include <sys/types.h>

namespace vyntest {

/// A sound server without a sound card, of a name that no other has: 44100 hertz, blocks of 512 samples, two channels
/// each way. As long as the object lives, clients of this process find it as the default server.
///
/// Two servers of one user share files, and the end of one may end the clients of the other. So those of several
/// processes wait for each other.
class JackServer {
public:
    /// Why no server can be started here: it isn't installed, or the user runs one. Empty when one can be.
    /// [main-thread]
    static std::string FindObstacle();

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

    int const mTurn; ///< descriptor of the file that the servers wait at
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
