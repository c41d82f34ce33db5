#include "vyncore/debug/Trace.h"
#include "support/NoAllocationScope.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace vyncore::debug;

class TraceTest : public testing::Test {
protected:
    TraceTest() {
        SetTraceSink([this](int level, std::string_view tag, std::string_view text) {
            mLines.push_back(std::to_string(level) + " " + std::string(tag) + ": " + std::string(text));
        });
    }
    ~TraceTest() override {
        ResetTraceLevels();
        SetTraceSink({});
    }

    std::vector<std::string> mLines;
};

TEST_F(TraceTest, ATagHasItsOwnLevelOrTheGeneralOne) {
    Trace(0, "AudioFilter", u"complaint \u00e4");
    Trace(1, "AudioFilter", "too fine");
    SetTraceLevel(3);
    SetTraceTagLevel("Scanner", 6);
    SetTraceTagLevel("Quiet", -1);
    Trace(3, "AudioFilter", "now wanted");
    Trace(4, "AudioFilter", "too fine");
    Trace(6, "Scanner", "progress");
    Trace(7, "Scanner", "too fine");
    Trace(0, "Quiet", "silenced");
    Trace(0, nullptr, static_cast<char const*>(nullptr));
    DebugTrace("asked for");
    EXPECT_EQ(mLines, (std::vector<std::string>{"0 AudioFilter: complaint \xc3\xa4", "3 AudioFilter: now wanted",
                                                "6 Scanner: progress", "0 : ", "0 debug: asked for"}));
}

TEST_F(TraceTest, APointFollowsTheFilterAndCostsTheProcessThreadNothingWhenItIsOff) {
    TracePoint point(6, "Scanner");
    DebugTrace(point, []() -> char const* { throw std::logic_error("text made for a point that is off"); });
    SetTraceTagLevel("Scanner", 6);
    EXPECT_TRUE(point.Enabled());
    DebugTrace(point, [] { return u"progress"; });
    EXPECT_EQ(mLines, std::vector<std::string>{"6 Scanner: progress"});
    SetTraceTagLevel("Scanner", 5);
    vyntest::NoAllocationScope const scope;
    EXPECT_FALSE(point.Enabled());
    EXPECT_FALSE(point.Enabled());
    Trace(6, "Scanner", "off");
}

TEST_F(TraceTest, ASinkMayTraceAndThrow) {
    int depth = 0;
    SetTraceSink([&depth](int, std::string_view, std::string_view) {
        if (++depth == 1)
            Trace(0, "Sink", "nested");
        throw std::runtime_error("from the sink");
    });
    Trace(0, "AudioFilter", u"text");
    EXPECT_EQ(depth, 2);
}

TEST_F(TraceTest, WithoutASinkALineGoesToStandardError) {
    SetTraceSink({});
    testing::internal::CaptureStderr();
    Trace(0, "AudioFilter", u"complaint");
    Trace(1, "AudioFilter", u"too fine");
    DebugTrace("line\nwith an end\n");
    Trace(0, "Plug\nin", u"\u00e4\tb\x1b[2J\r\u009bc");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "AudioFilter: complaint\ndebug: line with an end\nPlug in: \xc3\xa4\tb [2J  c\n");
}

TEST_F(TraceTest, ThreadsTraceWhileFilterAndSinkChange) {
    static TracePoint sPoint(6, "Scanner");
    std::atomic<int> delivered{0};
    auto const count = [&delivered](int, std::string_view, std::string_view) { ++delivered; };
    SetTraceSink(count);
    SetTraceLevel(6);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([] {
            for (int turn = 0; turn < 300; ++turn) {
                Trace(0, "Always", "text");
                DebugTrace(sPoint, [] { return u"text"; });
            }
        });
    }
    for (int turn = 0; turn < 100; ++turn) {
        SetTraceTagLevel("Scanner", turn % 2 == 0 ? 5 : 6);
        SetTraceSink(count);
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_GE(delivered.load(), 900);
    EXPECT_LE(delivered.load(), 1800);
    EXPECT_TRUE(sPoint.Enabled());
}

} // namespace
