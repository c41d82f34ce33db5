#include "vynaudiofilterhost/BusConfigurationUtilities.h"

#include "host/HostTest.h"

#include <boost/any.hpp>
#include <nlohmann/json.hpp>

namespace {

using namespace vyntest;
using namespace vynaudiofilterhost::utility;
using Buses = AudioFilter::Buses;
constexpr auto kMain = AudioBusDescription::kTypeMain;
constexpr auto kSideChain = AudioBusDescription::kTypeSideChain;

Buses const kInputs{AudioBusDescription::CreateStereo(u"Input1", kMain),
                    AudioBusDescription::CreateSurround51(u"Input2 \"\\\u00e9\U0001F3B5\n", kMain),
                    AudioBusDescription::CreateMono(u"Input3-Sidechain", kSideChain)};
Buses const kOutputs{AudioBusDescription::CreateStereo(u"Output1", kMain), AudioBusDescription(u"", {}, kMain)};

TEST(BusConfigurationTest, ConfigurationSurvivesItsText) {
    auto const text = ConvertBusConfigurationToJSON(kInputs, kOutputs);
    Buses inputs = kOutputs;
    Buses outputs;
    ConvertBusConfigurationFromJSON(text, inputs, outputs);
    EXPECT_EQ(inputs, kInputs);
    EXPECT_EQ(outputs, kOutputs);

    auto const document = nlohmann::json::parse(text);
    EXPECT_EQ(document["in"][2], nlohmann::json::parse(R"({"type": 1, "name": "Input3-Sidechain", "layout": [0]})"));
    EXPECT_EQ(document["in"][1]["layout"], nlohmann::json({100, 101, 102, 103, 104, 105}));
    EXPECT_EQ(nlohmann::json::parse(ConvertBusConfigurationToJSON({}, {})),
              nlohmann::json::parse(R"({"in":[],"out":[]})"));
}

TEST(BusConfigurationTest, WhatIsMissingIsEmptyAndWhatIsNoJSONIsNothing) {
    for (char const* const text : {"", "in", "{", "{}", "{\"in\":[]}", "[]", "7", "null", "{\"in\":[],\"out\":[]} x"}) {
        Buses inputs = kInputs;
        Buses outputs = kOutputs;
        ConvertBusConfigurationFromJSON(text, inputs, outputs);
        EXPECT_TRUE(inputs.empty() && outputs.empty()) << text;
    }
    Buses inputs;
    Buses outputs;
    ConvertBusConfigurationFromJSON(
        R"({"out":[{},{"layout":[-1,4294967297,101],"type":18446744073709551615,"more":{}}],"else":1})", inputs,
        outputs);
    ASSERT_EQ(outputs.size(), 2u);
    EXPECT_EQ(outputs[0], AudioBusDescription());
    EXPECT_EQ(outputs[1].GetLayout()[0].GetLabel(), -1);
    EXPECT_EQ(outputs[1].GetLayout()[1].GetLabel(), 1) << "numbers are taken at 32 bits";
    EXPECT_EQ(static_cast<int>(outputs[1].GetType()), -1);
}

TEST(BusConfigurationTest, ValueOfTheWrongKindIsRaisedAndChangesNothing) {
    class Filter : public AudioFilter {
    public:
        Filter() : AudioFilter(u"id", u"name") {}
        void RequestIOConfiguration(Layouts const& in, Layouts const&) override {
            ++requests;
            ClearBusConfiguration();
            for (auto const& layout : in)
                AddInputBus({u"", layout, kMain});
        }
        int requests = 0;
    };
    boost::intrusive_ptr<Filter> const filter(new Filter);
    for (char const* const bad :
         {R"({"in":7})", R"({"in":{}})", R"({"in":null})", R"({"in":[7]})", R"({"in":[[]]})", R"({"in":[null]})",
          R"({"in":[{"type":"1"}]})", R"({"in":[{"type":1.5}]})", R"({"in":[{"type":true}]})", R"({"in":[{"name":1}]})",
          R"({"in":[{"layout":1}]})", R"({"in":[{"layout":["L"]}]})", R"({"in":[],"out":"none"})"}) {
        Buses inputs = kInputs;
        Buses outputs = kOutputs;
        EXPECT_THROW(ConvertBusConfigurationFromJSON(bad, inputs, outputs), boost::bad_any_cast) << bad;
        EXPECT_EQ(inputs, kInputs) << bad;
        EXPECT_THROW(SetAudioFilterBusConfig(bad, filter), boost::bad_any_cast) << bad;
    }
    EXPECT_EQ(filter->requests, 0);
    SetAudioFilterBusConfig(R"({"in":[{"layout":[100,101]}],"out":[]})", filter);
    EXPECT_EQ(filter->GetNumberOfInputChannels(), 2);
    SetAudioFilterBusConfig("no JSON", filter);
    EXPECT_EQ(GetAudioFilterBusConfig(filter), ConvertBusConfigurationToJSON(filter->GetInputBuses(), {}));
    EXPECT_EQ(filter->requests, 3) << "the request without channels was undone";
    SetAudioFilterBusConfig("{}", nullptr);
    EXPECT_EQ(GetAudioFilterBusConfig(nullptr), ConvertBusConfigurationToJSON({}, {}));
}

TEST(BusConfigurationTest, TextThatIsNestedTooDeepIsNothing) {
    Buses inputs = kInputs;
    Buses outputs;
    ConvertBusConfigurationFromJSON("{\"in\":" + std::string(1000000, '['), inputs, outputs);
    EXPECT_TRUE(inputs.empty());
    inputs = kInputs;
    ConvertBusConfigurationFromJSON("{\"in\":" + std::string(100000, '[') + std::string(100000, ']') + "}", inputs,
                                    outputs);
    EXPECT_TRUE(inputs.empty());
}

} // namespace
