#include "os/ChildProcess.h"
#include "os/Clock.h"
#include "os/InterruptDescriptor.h"
#include "os/WaitForDescriptors.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using os::ChildProcess;
using os::ProcessEnd;
using Stream = ChildProcess::Stream;

constexpr std::size_t kMost = 1 << 20;

ChildProcess MakeShell(std::string const& script) {
    return {"/bin/sh", {"-c", script}};
}

void WaitFor(std::intptr_t descriptor) {
    std::intptr_t const descriptors[]{-1, descriptor};
    os::WaitForDescriptors(descriptors, os::GetMonotonicNanos() + 20'000'000'000);
}

ProcessEnd WaitForEnd(ChildProcess& child) {
    while (true) {
        if (auto const end = child.TakeEnd())
            return *end;
        WaitFor(child.GetEndDescriptor());
    }
}

std::string ReadLine(ChildProcess& child, Stream stream = Stream::kOutput) {
    std::string text;
    do
        WaitFor(child.GetDescriptor(stream));
    while (child.Read(stream, text, kMost) && text.find('\n') == std::string::npos);
    return text;
}

// What has ended and was not collected yet runs no more.
bool IsRunning(pid_t process) {
    std::string const text = vyntest::ReadText("/proc/" + std::to_string(process) + "/stat");
    std::size_t const name = text.rfind(") ");
    return name != std::string::npos && text[name + 2] != 'Z';
}

bool GoesAway(pid_t process) {
    for (int turn = 0; turn < 2000 && IsRunning(process); ++turn)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return !IsRunning(process);
}

TEST(ChildProcessTest, StreamsAreThoseOfTheChild) {
    ChildProcess child = MakeShell("read line; echo \"<$line>\"; echo oops >&2; cat; exit 3");
    EXPECT_TRUE(child.Send("a line\n"));
    EXPECT_EQ(ReadLine(child), "<a line>\n");
    EXPECT_EQ(ReadLine(child, Stream::kErrors), "oops\n");
    EXPECT_FALSE(child.TakeEnd());
    child.CloseInput();
    ProcessEnd const end = WaitForEnd(child);
    EXPECT_EQ(end.Describe(), "exited with status 3");
    EXPECT_FALSE(child.Send("nobody reads this\n"));
    std::string rest;
    EXPECT_FALSE(child.Read(Stream::kOutput, rest, kMost));
    EXPECT_EQ(child.GetDescriptor(Stream::kOutput), -1);
}

TEST(ChildProcessTest, EndsAreToldInWords) {
    struct {
        char const* script;
        char const* words;
    } const cases[]{{"exit 0", "exited with status 0"},
                    {"kill -SEGV $$", "crashed: Segmentation fault (SIGSEGV)"},
                    {"kill -ABRT $$", "crashed: Aborted (SIGABRT)"},
                    {"kill -KILL $$", "was ended from outside: Killed (SIGKILL)"}};
    for (auto const& [script, words] : cases) {
        ChildProcess child = MakeShell(script);
        EXPECT_EQ(WaitForEnd(child).Describe(), words) << script;
    }
    ChildProcess none("/no/such/program", {});
    EXPECT_EQ(WaitForEnd(none).number, 127);
    EXPECT_NE(ReadLine(none, Stream::kErrors).find("No such file"), std::string::npos);
}

TEST(ChildProcessTest, WhomTheChildStartedEndsWithItHoweverItEnds) {
    // The second process keeps all streams open, and the first is through at once.
    ChildProcess child = MakeShell("sleep 1000 & echo $!");
    pid_t const left = std::stoi(ReadLine(child));
    EXPECT_TRUE(WaitForEnd(child).IsClean());
    EXPECT_TRUE(GoesAway(left));

    ChildProcess killed = MakeShell("trap '' TERM INT HUP; sleep 1000 & echo $!; wait");
    pid_t const started = std::stoi(ReadLine(killed));
    killed.Kill();
    EXPECT_EQ(WaitForEnd(killed).number, SIGKILL);
    EXPECT_TRUE(GoesAway(started));
}

TEST(ChildProcessTest, TheChildEndsWithItsParentWhateverEndsThat) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    pid_t const parent = ::fork();
    if (parent == 0) {
        ChildProcess child = MakeShell("echo $$; sleep 1000");
        std::string const number = ReadLine(child);
        [[maybe_unused]] ssize_t const written = ::write(ends[1], number.data(), number.size());
        ::kill(::getpid(), SIGKILL);
    }
    char number[32]{};
    ASSERT_GT(::read(ends[0], number, sizeof number - 1), 0);
    ::waitpid(parent, nullptr, 0);
    EXPECT_TRUE(GoesAway(std::atoi(number)));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(ChildProcessTest, OutputIsReadAsFarAsIsWanted) {
    ChildProcess child = MakeShell("yes");
    std::string text;
    while (text.size() < 100000) {
        WaitFor(child.GetDescriptor(Stream::kOutput));
        EXPECT_TRUE(child.Read(Stream::kOutput, text, 100000 - text.size()));
    }
    EXPECT_EQ(text.size(), 100000u);
}

TEST(ChildProcessTest, ItsSignalsAreAsTheyWereAtTheStartOfAProgram) {
    auto const former = std::signal(SIGPIPE, SIG_IGN);
    ChildProcess child = MakeShell("kill -PIPE $$; echo still here");
    EXPECT_EQ(WaitForEnd(child).number, SIGPIPE);
    std::signal(SIGPIPE, former);
}

TEST(InterruptDescriptorTest, AWishToEndIsSomethingToWaitForAndWhatIsIgnoredStaysSo) {
    for (int const number : {SIGINT, SIGTERM, SIGHUP}) {
        os::InterruptDescriptor const interrupt;
        EXPECT_FALSE(interrupt.WasInterrupted());
        std::raise(number);
        WaitFor(interrupt.Handle());
        EXPECT_TRUE(interrupt.WasInterrupted()) << number;
    }
    auto const former = std::signal(SIGHUP, SIG_IGN);
    os::InterruptDescriptor const interrupt;
    std::raise(SIGHUP);
    EXPECT_FALSE(interrupt.WasInterrupted());
    std::signal(SIGHUP, former);
}

TEST(OwnProcessTest, WhatItHoldsIsCounted) {
    int const before = os::CountDescriptors();
    EXPECT_GT(before, 2);
    EXPECT_LT(before, os::GetMostDescriptors());
    int const another = ::dup(STDERR_FILENO);
    EXPECT_EQ(os::CountDescriptors(), before + 1);
    ::close(another);
    EXPECT_FALSE(os::HasChildren());
    {
        ChildProcess child = MakeShell("exit 0");
        WaitFor(child.GetEndDescriptor());
        EXPECT_TRUE(os::HasChildren());
    }
    EXPECT_FALSE(os::HasChildren());
    EXPECT_EQ(os::CountDescriptors(), before);
}

} // namespace
