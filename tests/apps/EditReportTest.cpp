#include "vynhost/EditReport.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/GenericParameterInfo.h"

#include "os/Clock.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>
#include <thread>

using namespace vynaudiofilterhost;
using vynhost::EditReport;

namespace {

// "First" goes from 0 to 10 dB; nothing is told of the other.
class TwoParameters final : public AudioFilter {
public:
    TwoParameters() : AudioFilter(u"id", u"Two\nLines") {}

    int GetParameterCount() const override { return 2; }
    float GetParameter(int) const override { return 0.5F; }
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override {
        return index == 0 ? new GenericParameterInfo(u"First", u"dB", kParameterUnitWholeNumber, 0, 0.0F, 10.0F, true,
                                                     false, 1, 1)
                          : nullptr;
    }

    void Edit(int index, float value) { GetAutomatedParameterChangeSignal()(index, value); }
};

class EditReportTest : public testing::Test {
protected:
    template <class Work>
    static std::string OutputOf(Work const& work) {
        testing::internal::CaptureStdout();
        work();
        return testing::internal::GetCapturedStdout();
    }

    // A gesture with three values in two turns, and a value on its own.
    std::string Drag(bool json) {
        EditReport report(*mFilter, json);
        return OutputOf([&] {
            mFilter->BeginEditing(0);
            mFilter->Edit(0, 0.25F);
            mFilter->Edit(0, 0.4F);
            report.WriteEdits();
            std::thread([&] { mFilter->Edit(0, 0.7F); }).join();
            mFilter->EndEditing(0);
            mFilter->Edit(1, 0.125F);
            mFilter->BeginEditing(-1);
            report.WriteEdits();
            report.WriteEdits();
        });
    }

    boost::intrusive_ptr<TwoParameters> mFilter{new TwoParameters};
};

TEST_F(EditReportTest, PersonReadsTheValueThatAGestureEndsWith) {
    EXPECT_EQ(Drag(false), "First: 5 dB\nparameter 1: 0.125\n");
}

TEST_F(EditReportTest, ProgramGetsBothEndsAndTheLastValueOfEachTurn) {
    std::istringstream lines(Drag(true));
    std::vector<nlohmann::json> edits;
    for (std::string line; std::getline(lines, line);)
        edits.push_back(nlohmann::json::parse(line).at("edit"));
    ASSERT_EQ(edits.size(), 5U);
    nlohmann::json const begin{{"index", 0},         {"name", "First"}, {"value", nullptr},
                               {"display", nullptr}, {"text", nullptr}, {"gesture", "begin"}};
    nlohmann::json const moved{{"index", 0},     {"name", "First"}, {"value", 0.4},
                               {"display", 4.0}, {"text", "4"},     {"gesture", nullptr}};
    EXPECT_EQ(edits[0], begin);
    EXPECT_EQ(edits[1], moved);
    EXPECT_EQ(edits[2].at("value"), 0.7);
    EXPECT_EQ(edits[3].at("gesture"), "end");
    EXPECT_EQ(edits[3].at("value"), 0.5);
    EXPECT_EQ(edits[4].at("name"), "parameter 1");
}

TEST_F(EditReportTest, GesturesThatFollowEachOtherAtOnceAreOne) {
    EditReport report(*mFilter, true);
    auto const drag = [&] {
        mFilter->BeginEditing(0);
        mFilter->Edit(0, 0.25F);
        mFilter->EndEditing(0);
    };
    auto const count = [](std::string const& text) { return std::count(text.begin(), text.end(), '\n'); };
    std::string const whole = OutputOf([&] {
        for (int i = 0; i < 1000; ++i)
            drag();
        report.WriteEdits();
    });
    EXPECT_EQ(count(whole), 3);
    mFilter->BeginEditing(0);
    EXPECT_EQ(count(OutputOf([&] { report.WriteEdits(); })), 1);
    // The gesture that is told as open stays so.
    std::string const continued = OutputOf([&] {
        mFilter->EndEditing(0);
        drag();
        mFilter->BeginEditing(0);
        report.WriteEdits();
    });
    EXPECT_EQ(count(continued), 1);
    EXPECT_EQ(nlohmann::json::parse(continued).at("edit").at("gesture"), nullptr);
}

TEST_F(EditReportTest, VeryManyParametersAreHeardQuicklyAndWrittenInTurns) {
    constexpr int kMany = 300'000;
    EditReport report(*mFilter, true);
    std::uint64_t const start = os::GetMonotonicNanos();
    for (int index = 0; index < kMany; ++index)
        mFilter->Edit(index, 0.5F);
    EXPECT_LT(os::GetMonotonicNanos() - start, 4'000'000'000U);
    std::string const first = OutputOf([&] { report.WriteEdits(); });
    EXPECT_LT(std::count(first.begin(), first.end(), '\n'), kMany);
    EXPECT_TRUE(first.starts_with(R"({"edit":{"index":0,)")) << first.substr(0, 80);
}

TEST_F(EditReportTest, TurnsLeaveNothingOutAndKeepTheOrder) {
    constexpr int kSome = 2000;
    EditReport report(*mFilter, true);
    for (int index = 0; index < kSome; ++index)
        mFilter->Edit(index, 0.5F);
    std::string const out = OutputOf([&] {
        report.WriteEdits();
        report.WriteAllEdits();
    });
    std::istringstream lines(out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_EQ(nlohmann::json::parse(line).at("edit").at("index"), count);
    EXPECT_EQ(count, kSome);
}

TEST_F(EditReportTest, EveryLineIsOneAndSaysWhatItIs) {
    for (bool const json : {false, true}) {
        EditReport report(*mFilter, json);
        std::string const out = OutputOf([&] {
            report.TellOpened({3, 4});
            report.TellNote("one\ntwo");
            report.TellFile("state", "a\nb");
        });
        EXPECT_EQ(out, json ? R"({"opened":{"id":"id","name":"Two\nLines","width":3,"height":4}})"
                              "\n"
                              R"({"note":"one\ntwo"})"
                              "\n"
                              R"({"state":{"path":"a\nb"}})"
                              "\n"
                            : "Two Lines  id\nnote: one two\nstate written: a b\n");
    }
}

} // namespace
