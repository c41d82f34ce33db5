#pragma once

#include <string>
#include <sys/types.h>

namespace vyntest {

/// A sound server without a sound card, of a name that no other has: 44100 hertz, blocks of 512 samples, two channels
/// each way. As long as the object lives, clients of this process find it as the default server.
///
/// Two servers of one user share files, and the end of one may end the clients of the other. So those of several
/// processes wait for each other.
/// [main-thread]
class JackServer {
public:
    /// Why no server can be started here: it isn't installed, or the user runs one. Empty when one can be.
    static std::string FindObstacle();

    /// Returns when the server takes clients. Throws std::runtime_error when it doesn't within ten seconds.
    JackServer();
    JackServer(JackServer const&) = delete;
    JackServer& operator=(JackServer const&) = delete;
    ~JackServer();

    /// Ends the server at once, without a word to its clients.
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
/// [main-thread]
class NoJackServer {
public:
    NoJackServer();
    NoJackServer(NoJackServer const&) = delete;
    NoJackServer& operator=(NoJackServer const&) = delete;
    ~NoJackServer();
};

} // namespace vyntest
