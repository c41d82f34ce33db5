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
    static std::vector<nlohmann::json> EditsOf(std::string const& text) {
        std::istringstream lines(text);
        std::vector<nlohmann::json> edits;
        for (std::string line; std::getline(lines, line);)
            edits.push_back(nlohmann::json::parse(line).at("edit"));
        return edits;
    }

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
    std::vector<nlohmann::json> const edits = EditsOf(Drag(true));
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
    std::string const whole = OutputOf([&] {
        for (int i = 0; i < 1000; ++i)
            drag();
        report.WriteEdits();
    });
    EXPECT_EQ(EditsOf(whole).size(), 3U);
    mFilter->BeginEditing(0);
    EXPECT_EQ(EditsOf(OutputOf([&] { report.WriteEdits(); })).size(), 1U);
    // The gesture that is told as open stays so.
    auto const continued = EditsOf(OutputOf([&] {
        mFilter->EndEditing(0);
        drag();
        mFilter->BeginEditing(0);
        report.WriteEdits();
    }));
    ASSERT_EQ(continued.size(), 1U);
    EXPECT_EQ(continued[0].at("gesture"), nullptr);
}

TEST_F(EditReportTest, VeryManyParametersAreHeardQuicklyAndWrittenInTurnsThatKeepTheOrder) {
    constexpr int kMany = 300'000;
    EditReport report(*mFilter, true);
    std::uint64_t const start = os::GetMonotonicNanos();
    for (int index = 0; index < kMany; ++index)
        mFilter->Edit(index, 0.5F);
    EXPECT_LT(os::GetMonotonicNanos() - start, 4'000'000'000U);
    std::string const first = OutputOf([&] { report.WriteEdits(); });
    EXPECT_LT(std::ranges::count(first, '\n'), kMany);
    std::istringstream lines(first + OutputOf([&] { report.WriteAllEdits(); }));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_TRUE(line.starts_with(R"({"edit":{"index":)" + std::to_string(count) + ',')) << line;
    EXPECT_EQ(count, kMany);
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
