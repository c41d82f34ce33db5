#include "support/JackServer.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <jack/jack.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/file.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace vyntest {

namespace {

constexpr char const* kProgram = "/usr/bin/jackd";
constexpr char const* kStarter = "/usr/bin/setpriv";
constexpr char const* kVariable = "JACK_DEFAULT_SERVER";

std::string MakeName() {
    static int number = 0;
    return "vyntest-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
}

// The turn lasts until the descriptor is closed, by the system if need be.
int WaitForTurn() {
    std::string const path =
        std::filesystem::temp_directory_path() / ("vyntest-jack-" + std::to_string(::getuid()) + ".lock");
    int const file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file == -1 || ::flock(file, LOCK_EX) != 0)
        throw std::runtime_error("there is no turn to wait for");
    return file;
}

void SilenceMessages() {
    jack_set_error_function([](char const*) {});
    jack_set_info_function([](char const*) {});
}

pid_t Spawn(std::string const& name) {
    // The server ends in good order even when this process does not.
    std::array<char const*, 15> const arguments{kStarter, "--pdeathsig", "TERM", kProgram, "-n", name.c_str(), "-r",
                                                "-d",     "dummy",       "-r",   "44100",  "-p", "512",        nullptr};
    posix_spawn_file_actions_t silent;
    ::posix_spawn_file_actions_init(&silent);
    ::posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_adddup2(&silent, STDOUT_FILENO, STDERR_FILENO);
    pid_t process = -1;
    int const error =
        ::posix_spawn(&process, kStarter, &silent, nullptr, const_cast<char**>(arguments.data()), environ);
    ::posix_spawn_file_actions_destroy(&silent);
    if (error != 0)
        throw std::runtime_error("jackd can't be started");
    return process;
}

// Those of the clients that the killed server had.
void RemoveSemaphores(std::string const& name) noexcept {
    std::error_code failed;
    for (auto const& entry : std::filesystem::directory_iterator("/dev/shm", failed)) {
        if (entry.path().filename().string().find("_" + name + "_") != std::string::npos)
            std::filesystem::remove(entry, failed);
    }
}

bool TakesClients() {
    jack_client_t* const client = jack_client_open("ready", JackNoStartServer, nullptr);
    if (client)
        jack_client_close(client);
    return client != nullptr;
}

} // namespace

std::string JackServer::FindObstacle() {
    if (::access(kProgram, X_OK) != 0 || ::access(kStarter, X_OK) != 0)
        return "the package jackd2 is not installed";
    SilenceMessages();
    return TakesClients() ? "a JACK server of this user is running, and would be disturbed" : "";
}

JackServer::JackServer() : mTurn(WaitForTurn()), mName(MakeName()) {
    SilenceMessages();
    ::setenv(kVariable, mName.c_str(), 1);
    mProcess = Spawn(mName);
    try {
        WaitUntilReady();
    } catch (...) {
        End(SIGTERM);
        ::close(mTurn);
        throw;
    }
}

JackServer::~JackServer() {
    End(SIGTERM);
    TidyUp();
    ::unsetenv(kVariable);
    ::close(mTurn);
}

void JackServer::Kill() {
    mWasKilled = true;
    End(SIGKILL);
}

// The system has room for eight servers, and one that was killed keeps its place, and shared memory with it, until
// another of its name has come and gone.
void JackServer::TidyUp() noexcept {
    if (!mWasKilled)
        return;
    try {
        mProcess = Spawn(mName);
        WaitUntilReady();
    } catch (std::runtime_error const&) {
        // There is nothing more to be tried.
    }
    End(SIGTERM);
    RemoveSemaphores(mName);
}

// The server tells nobody when it is ready.
void JackServer::WaitUntilReady() {
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!TakesClients()) {
        if (::waitpid(mProcess, nullptr, WNOHANG) != 0)
            mProcess = -1;
        if (mProcess == -1 || std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("jackd takes no clients");
        ::poll(nullptr, 0, 10);
    }
}

void JackServer::End(int signal) noexcept {
    if (mProcess == -1)
        return;
    ::kill(mProcess, signal);
    ::waitpid(mProcess, nullptr, 0);
    mProcess = -1;
}

NoJackServer::NoJackServer() {
    ::setenv(kVariable, MakeName().c_str(), 1);
}

NoJackServer::~NoJackServer() {
    ::unsetenv(kVariable);
}

} // namespace vyntest
