#include "vynhost/EditReport.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/GenericParameterInfo.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

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
