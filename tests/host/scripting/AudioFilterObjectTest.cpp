#include "vynaudiofilterhost/scripting/AudioFilterObject.h"

#include "fakes/RoutedFilter.h"
#include "host/HostTest.h"
#include "support/ScriptItems.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynmediatypes/scripting/AudioBusDescriptionObject.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/ParameterErrorException.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <cmath>
#include <limits>
#include <utility>

namespace {

using namespace vyntest;
using vynmediatypes::scripting::AudioBusDescriptionObject;
using vynscripting::ParameterErrorException;
using vynscripting::ScriptObject;
using vynscripting::ScriptObjectPtr;
using vynscripting::ScriptValue;
using Objects = std::vector<ScriptObjectPtr>;

// Keeps what it is sent.
class ScriptedFilter : public RoutedFilter {
public:
    ScriptedFilter() : RoutedFilter({Bus(2)}, {Bus(2)}) {
        SetMainTargetBus(Bus(2));
        for (auto const side : {kDirectionInput, kDirectionOutput})
            SetChannelMap(vyntest::MapOf({-1, -1}), side);
    }

    int GetParameterCount() const override { return 7; }
    float GetParameter(int index) const override { return static_cast<float>(index) / 4.0f; }
    void SetParameter(int index, float value) override { set.emplace_back(index, value); }
    void RequestBusConfiguration(Buses const& inputs, Buses const& outputs) override {
        requests.insert(requests.end(), {inputs, outputs});
    }

    std::vector<std::pair<int, float>> set;
    std::vector<Buses> requests; ///< inputs and outputs in turn
};

using FilterPointer = boost::intrusive_ptr<AudioFilter>;

class AudioFilterObjectTest : public testing::Test {
protected:
    void SetUp() override {
        SetMainThreadToCurrentThread();
        mFilter->ConnectAutomatedParameterChange([this](int, float) { ++mAutomated; });
    }

    static ScriptObjectPtr Make(std::function<FilterPointer()> const& provider = nullptr) {
        return vynscripting::utils::CreateScriptObject(
            new vynscripting::ScriptContext, AudioFilterObject::GetClassname(), [&](ScriptObject& object) {
                if (provider)
                    dynamic_cast<AudioFilterObject&>(object).Initialize(provider);
            });
    }

    boost::intrusive_ptr<ScriptedFilter> const mFilter{new ScriptedFilter};
    FilterPointer mCurrent = mFilter;
    int mAutomated = 0;
    ScriptObjectPtr const mObject = Make([this] { return mCurrent; });
};

TEST_F(AudioFilterObjectTest, ScriptsFindTheItemsThatTheyWereWrittenFor) {
    auto const* const definition = vynscripting::definition::ScriptDefinitions::Get().Find("AudioFilter");
    ASSERT_TRUE(definition);
    EXPECT_EQ(mObject->GetDefinition(), definition);
    EXPECT_EQ(mObject->GetObjectClassName(), "AudioFilter");
    EXPECT_EQ(definition->GetDescription(), "AudioFilter");
    ASSERT_EQ(definition->GetNamespaces().size(), 2u);
    EXPECT_EQ(definition->GetNamespaces()[0].name, "vynaudiofilterhost");
    EXPECT_EQ(definition->GetNamespaces()[0].flags, 0u);
    EXPECT_EQ(definition->GetNamespaces()[1].name, "AudioFilter");
    EXPECT_EQ(definition->GetNamespaces()[1].flags, 0x90000u);
    for (auto const& item : definition->GetItems())
        EXPECT_EQ(item->GetFlags(), 0x100000u) << item->GetName();
    EXPECT_THAT(
        InterfaceOf(*definition),
        ElementsAre(
            "displayName: string | The display name of this audio filter.", "ID: string | The ID of the audio filter.",
            "parameterCount: int | Return the number of parameters.",
            "getParameter(index int): float | Return the value of the parameter at <index>.",
            "setParameter(index int, value float): bool | Set the value of the parameter at <index>.",
            "inputBuses: object[] | The input buses of the audio filter.",
            "outputBuses: object[] | The output buses of the audio filter.",
            "requestBusConfiguration(inputs object[], outputs object[]): bool | Requests the input/output bus "
            "configuration from the audio filter.",
            "getFilterChannelForTarget(isInput bool, targetChannel int): int | Returns the channel index for a target "
            "bus channel.",
            "assignChannelMapping(isInput bool, filterChannel int, targetChannel int): bool | Assignes a channel "
            "mapping.",
            "removeChannelMapping(isInput bool, filterChannel int): bool | Removes the channel mapping for a filter "
            "channel."));
}

TEST_F(AudioFilterObjectTest, ItemsReachTheFilterThatIsThereAtTheCall) {
    EXPECT_EQ(CallItem(mObject, "displayName"), ScriptValue(UString(u"Routed")));
    EXPECT_EQ(CallItem(mObject, "ID"), ScriptValue(UString(u"routed")));
    EXPECT_EQ(CallItem(mObject, "parameterCount"), ScriptValue(7));
    EXPECT_EQ(CallItem(mObject, "getParameter", {3}), ScriptValue(0.75));

    mCurrent = new RoutedFilter({Bus(1)}, {});
    EXPECT_EQ(CallItem(mObject, "parameterCount"), ScriptValue(0));
    EXPECT_EQ(std::get<Objects>(CallItem(mObject, "outputBuses")).size(), 0u);
    EXPECT_EQ(mCurrent->GetReferenceCount(), 1) << "an object holds no filter between calls";
    EXPECT_EQ(mFilter->GetReferenceCount(), 1);
}

TEST_F(AudioFilterObjectTest, ValuesAreClampedAndNotAnnounced) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::pair<double, float> const cases[] = {{1.5, 1.0f},  {-0.5, 0.0f},        {0.25, 0.25f},      {1.0, 1.0f},
                                              {0.0, 0.0f},  {kInfinity, 1.0f},   {-kInfinity, 0.0f}, {1e300, 1.0f},
                                              {-0.0, 0.0f}, {std::nan(""), 0.0f}};
    for (auto const& [given, expected] : cases) {
        EXPECT_EQ(CallItem(mObject, "setParameter", {-3, given}), ScriptValue(true));
        EXPECT_EQ(mFilter->set.back(), std::pair(-3, expected)) << given;
        EXPECT_FALSE(std::signbit(mFilter->set.back().second)) << given;
    }
    EXPECT_EQ(mFilter->set.size(), std::size(cases));
    EXPECT_EQ(mAutomated, 0);
}

TEST_F(AudioFilterObjectTest, EveryItemFailsWhileThereIsNoFilter) {
    mCurrent = nullptr;
    for (ScriptObjectPtr const& object : {Make(), mObject}) {
        for (auto const& item : object->GetDefinition()->GetItems()) {
            Arguments arguments;
            for (auto const& parameter : item->GetParameters()) {
                using vynscripting::ValueType;
                arguments.push_back(parameter.type == ValueType::kBool    ? ScriptValue(true)
                                    : parameter.type == ValueType::kInt   ? ScriptValue(0)
                                    : parameter.type == ValueType::kFloat ? ScriptValue(0.5)
                                                                          : ScriptValue(Objects()));
            }
            EXPECT_THROW(item->Call(nullptr, *object, arguments), ParameterErrorException) << item->GetName();
        }
    }
}

TEST_F(AudioFilterObjectTest, TheFirstProviderStays) {
    auto& object = dynamic_cast<AudioFilterObject&>(*mObject);
    object.Initialize([] { return FilterPointer(); });
    EXPECT_EQ(CallItem(mObject, "parameterCount"), ScriptValue(7));

    ScriptObjectPtr const unprovided = Make();
    dynamic_cast<AudioFilterObject&>(*unprovided).Initialize(nullptr);
    dynamic_cast<AudioFilterObject&>(*unprovided).Initialize([this] { return mCurrent; });
    EXPECT_THROW(CallItem(unprovided, "ID"), ParameterErrorException) << "one that is empty stays as well";
}

TEST_F(AudioFilterObjectTest, ObjectsOfOneFilterAreEqual) {
    FilterPointer const other(new RoutedFilter({}, {}));
    ScriptObjectPtr const same = Make([this] { return FilterPointer(mFilter); });
    ScriptObjectPtr const different = Make([&] { return other; });
    EXPECT_TRUE(mObject->IsEqual(same));
    EXPECT_FALSE(mObject->IsEqual(different));
    EXPECT_FALSE(mObject->IsEqual(Make()));
    EXPECT_FALSE(mObject->IsEqual(nullptr));
    mCurrent = nullptr;
    EXPECT_TRUE(mObject->IsEqual(Make())) << "neither has a filter";

    EXPECT_FALSE(mObject->IsEqual(new AudioBusDescriptionObject));
    EXPECT_FALSE(mObject->IsEqual(new AudioFilterObject("Plugin"))) << "the class name is another";
    EXPECT_TRUE(mObject->IsEqual(new ScriptObject("AudioFilter")));
}

TEST_F(AudioFilterObjectTest, ChannelsAreMappedOnTheSideThatIsNamed) {
    auto const maps = [&] {
        return std::pair(ValuesOf(mFilter->GetChannelMap(AudioFilter::kDirectionInput)),
                         ValuesOf(mFilter->GetChannelMap(AudioFilter::kDirectionOutput)));
    };
    using Values = std::vector<int>;
    EXPECT_EQ(CallItem(mObject, "assignChannelMapping", {true, 1, 0}), ScriptValue(true));
    EXPECT_EQ(maps(), std::pair(Values({-1, 0}), Values({-1, -1})));
    EXPECT_EQ(CallItem(mObject, "assignChannelMapping", {false, 0, 1}), ScriptValue(true));
    EXPECT_EQ(maps(), std::pair(Values({-1, 0}), Values({1, -1})));
    EXPECT_EQ(CallItem(mObject, "getFilterChannelForTarget", {true, 0}), ScriptValue(1));
    EXPECT_EQ(CallItem(mObject, "getFilterChannelForTarget", {false, 1}), ScriptValue(0));
    EXPECT_EQ(CallItem(mObject, "removeChannelMapping", {true, 1}), ScriptValue(true));
    EXPECT_EQ(maps(), std::pair(Values({-1, -1}), Values({1, -1})));
    EXPECT_EQ(CallItem(mObject, "removeChannelMapping", {false, 0}), ScriptValue(true));
    EXPECT_EQ(maps(), std::pair(Values({-1, -1}), Values({-1, -1})));
}

TEST_F(AudioFilterObjectTest, BusesGoToScriptsAndBackAsObjects) {
    auto const inputs = std::get<Objects>(CallItem(mObject, "inputBuses"));
    auto const outputs = std::get<Objects>(CallItem(mObject, "outputBuses"));
    ASSERT_EQ(inputs.size(), 1u);
    EXPECT_EQ(inputs[0]->GetContextHdl(), mObject->GetContextHdl());
    EXPECT_TRUE(inputs[0]->IsFinalized());
    EXPECT_TRUE(inputs[0]->IsEqual(outputs[0]));

    boost::intrusive_ptr<AudioBusDescriptionObject> const key(new AudioBusDescriptionObject);
    key->Initialize(AudioBusDescription::CreateMono(u"Key", AudioBusDescription::kTypeSideChain));
    EXPECT_EQ(CallItem(mObject, "requestBusConfiguration", {Objects{inputs[0], key}, outputs}), ScriptValue(true));
    EXPECT_EQ(mFilter->requests, (std::vector<AudioFilter::Buses>{{Bus(2), key->GetBusDescription()}, {Bus(2)}}));

    mFilter->requests.clear();
    for (ScriptObjectPtr const& stranger : {mObject, ScriptObjectPtr()}) {
        Objects const mixed{inputs[0], stranger};
        EXPECT_THROW(CallItem(mObject, "requestBusConfiguration", {mixed, outputs}), ParameterErrorException);
        EXPECT_THROW(CallItem(mObject, "requestBusConfiguration", {inputs, mixed}), ParameterErrorException);
    }
    EXPECT_TRUE(mFilter->requests.empty());
}

} // namespace
