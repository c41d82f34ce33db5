#include "os/FileRemovalOnSignals.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <optional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using os::FileRemovalOnSignals;
using vyntest::TemporaryFolder;

int FillStack(int depth) {
    char volatile frame[4096];
    frame[0] = 1;
    return depth == 0 ? 0 : FillStack(depth - 1) + frame[0];
}

void Crash() {
    rlimit const small{1 << 20, 1 << 20};
    setrlimit(RLIMIT_STACK, &small);
    FillStack(INT_MAX);
}

using Handler = void (*)(int);

Handler GetHandler(int signalNumber) {
    struct sigaction action {};
    sigaction(signalNumber, nullptr, &action);
    return action.sa_handler;
}

TEST(FileRemovalOnSignalsDeathTest, SignalsThatEndTheProcessLeaveNoFileBehind) {
    // The other style makes a folder of its own.
    GTEST_FLAG_SET(death_test_style, "fast");
    TemporaryFolder const folder;
    fs::path const file = folder.Path() / "f";
    for (int const number : {SIGINT, SIGTERM, SIGQUIT, SIGXCPU, SIGSYS, SIGTRAP, SIGSEGV}) {
        folder.AddFile("f");
        auto const end = [&] {
            std::signal(number, SIG_DFL);
            FileRemovalOnSignals const removal(file);
            number == SIGSEGV ? Crash() : static_cast<void>(std::raise(number));
        };
        EXPECT_EXIT(end(), testing::KilledBySignal(number), "");
        EXPECT_FALSE(fs::exists(file)) << number;
    }
}

TEST(FileRemovalOnSignalsTest, ChildrenThatEndLeaveTheFile) {
    TemporaryFolder const folder;
    folder.AddFile("f");
    FileRemovalOnSignals const removal(folder.Path() / "f");
    pid_t const child = fork();
    if (child == 0) {
        std::raise(SIGTERM);
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(fs::exists(folder.Path() / "f"));
}

TEST(FileRemovalOnSignalsTest, WhatIsIgnoredStaysSoAndHandlersOfOthersStay) {
    TemporaryFolder const folder;
    folder.AddFile("f");
    Handler const other = [](int) {};
    Handler const formerHangUp = std::signal(SIGHUP, SIG_IGN);
    Handler const formerTerm = std::signal(SIGTERM, SIG_DFL);
    Handler const formerQuit = std::signal(SIGQUIT, other);
    {
        FileRemovalOnSignals const removal(folder.Path() / "f");
        std::raise(SIGHUP);
        EXPECT_NE(GetHandler(SIGQUIT), other);
        std::signal(SIGTERM, other);
    }
    EXPECT_TRUE(fs::exists(folder.Path() / "f"));
    EXPECT_EQ(GetHandler(SIGHUP), SIG_IGN);
    EXPECT_EQ(GetHandler(SIGTERM), other);
    EXPECT_EQ(GetHandler(SIGQUIT), other);
    std::signal(SIGHUP, formerHangUp);
    std::signal(SIGTERM, formerTerm);
    std::signal(SIGQUIT, formerQuit);
}

} // namespace
