#include "FilterFixture.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassInfo.h"

#include <algorithm>
#include <thread>

namespace {

using namespace vyntest;
using testing::EndsWith;

using FilterLifecycleTest = FilterTest;

/// The calls so far, a line such as "component: initialize queryInterface(IAudioProcessor)" for each run of calls of
/// one object, without those that a factory makes by itself, and with a run of equal calls as one. Clears the log.
std::string TakeStage(FixtureModule& fixture) {
    std::string stage, object, last;
    for (FixtureCall const& call : fixture.Calls()) {
        std::string const caller = call.object == FixtureObject::Component    ? "component"
                                   : call.object == FixtureObject::Controller ? "controller"
                                                                              : "module";
        std::string const detail = call.detail[0] != '\0' ? "(" + std::string(call.detail) + ")" : std::string();
        std::string const text = call.name + detail;
        bool const isFactorysOwn = text == "created" || detail == "(IComponent)" ||
                                   (caller == "controller" && text == "queryInterface(IEditController)");
        if ((isFactorysOwn && caller != "module") || (caller == object && text == last))
            continue;
        stage += (caller == object ? " " : (stage.empty() ? "" : "\n") + caller + ": ") + text;
        object = caller;
        last = text;
    }
    fixture.ClearCalls();
    return stage;
}

AudioFilter::Buses StereoBus(AudioBusDescription::Type type) {
    return {AudioBusDescription::CreateStereo(u"", type)};
}

TEST_F(FilterLifecycleTest, WholeLifeMakesItsCallsInOrder) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(3);
    configuration.midiMapping = true;
    configuration.SetBuses({FixtureBus::Make(3, u"In"), FixtureBus::Make(3, u"Side", 1)},
                           {FixtureBus::Make(3, u"Out")});
    fixture = std::make_unique<FixtureModule>("configurable.vst3", configuration);
    static Texts moduleCalls;
    moduleCalls.clear();
    (*fixture)->setSink([](FixtureCall const* call) {
        if (call->object == FixtureObject::Module)
            moduleCalls.emplace_back(call->name);
    });
    auto const module = FindOrLoadVST3Module(FixturePath16("configurable.vst3"));
    ASSERT_TRUE(module);
    EXPECT_EQ(TakeStage(*fixture), "module: ModuleEntry GetPluginFactory");

    filter = module->CreateVST3Filter(fixture->UniqueID());
    ASSERT_TRUE(filter);
    std::string const askBuses = "getBusCount getBusInfo getBusArrangement getBusInfo getBusArrangement getBusCount "
                                 "getBusInfo getBusArrangement getBusCount getBusInfo activateBus getBusInfo "
                                 "getBusCount getBusInfo activateBus";
    EXPECT_EQ(
        TakeStage(*fixture),
        R"(module: countClasses getClassInfo getFactoryInfo countClasses getClassInfoUnicode createInstance(IComponent)
component: initialize queryInterface(872EE790-61B2-43A2-8DBA-33C1D9262D3E) queryInterface(IAudioProcessor) queryInterface(IEditController) getControllerClassId
module: createInstance(IEditController)
controller: initialize queryInterface(IUnitInfo) queryInterface(IMidiMapping) setComponentHandler
component: queryInterface(IConnectionPoint)
controller: queryInterface(IConnectionPoint)
component: connect
controller: connect
component: getState
controller: setComponentState getParameterCount getParameterInfo
component: )" +
            askBuses + R"( getLatencySamples
controller: getProgramListCount getUnitCount getUnitInfo getProgramListInfo queryInterface(3C8A2F25-1411-4BF7-851B-13CB9C55AC92)
component: queryInterface(F83AD871-25F9-4500-903A-25AA46A3848C) setupProcessing)");

    filter->SetSampleRate(48000.0f);
    EXPECT_EQ(TakeStage(*fixture), "component: setupProcessing");
    filter->SetBlockSize(256);
    EXPECT_THAT(TakeTexts(), ElementsAre("Component.setupProcessing(256)"));
    filter->RequestBusConfiguration(StereoBus(AudioBusDescription::kTypeMain),
                                    StereoBus(AudioBusDescription::kTypeMain));
    EXPECT_EQ(TakeStage(*fixture), "component: setBusArrangements " + askBuses);

    filter->SetSideChainTargetBus(StereoBus(AudioBusDescription::kTypeSideChain).front());
    filter->Resume();
    EXPECT_THAT(TakeTexts(),
                ElementsAre("Component.setupProcessing(256)", "Component.setActive(1)", "Component.getBusCount(0)",
                            "Component.getBusInfo(0)", "Component.getBusInfo(1)", "Component.activateBus(1)",
                            "Component.getLatencySamples()"));
    SampleBlock in(4, 256), out(2, 256);
    std::thread([&] { Render(in, out, 256), Render(in, out, 256); }).join();
    EXPECT_THAT(fixture->CallTexts(),
                ElementsAre("Component.setProcessing(1)", "Component.process(256)", "Component.process(256)"));
    EXPECT_NE(fixture->Calls().front().thread, FixtureThread());
    fixture->ClearCalls();
    filter->GetTail();
    filter->SetParameter(0, 0.25f);
    filter->Suspend();
    filter->GetInitialDelay();
    EXPECT_THAT(TakeTexts(),
                ElementsAre("Component.getTailSamples()", "Controller.setParamNormalized(0)",
                            "Component.setProcessing(1)", "Component.process(0)", "Component.setProcessing(0)",
                            "Component.setProcessing(0)", "Component.setActive(0)", "Component.getLatencySamples()"));
    filter.reset();
    EXPECT_EQ(TakeStage(*fixture), R"(component: queryInterface(IConnectionPoint)
controller: queryInterface(IConnectionPoint)
component: disconnect
controller: disconnect setComponentHandler terminate destroyed
component: terminate destroyed)");
    moduleCalls.clear();
    Terminate();
    EXPECT_THAT(moduleCalls, ElementsAre("ModuleExit"));
    (*fixture)->setSink(nullptr);
    Initialize(true);
}

TEST_F(FilterLifecycleTest, SingleObjectIsTerminatedAsOftenAsItWasInitialized) {
    Open({}, "single.vst3");
    ASSERT_TRUE(filter);
    EXPECT_EQ(fixture->CountCalls("initialize"), 2);
    EXPECT_EQ(fixture->CountCalls("connect"), 2);
    filter.reset();
    EXPECT_EQ(fixture->CountCalls("terminate"), 2);
    FixtureConfiguration configuration;
    Open(configuration.Fail(FixtureFault::ControllerInitializeFails), "single.vst3");
    ASSERT_TRUE(filter);
    filter.reset();
    EXPECT_THAT(fixture->CallTexts({"terminate", "destroyed"}),
                ElementsAre("Component.terminate()", "Component.destroyed(0)"));
}

TEST_F(FilterLifecycleTest, PluginThatCannotBeMadeGivesNoFilterAndLeavesNothing) {
    Open({});
    filter.reset();
    int const references = (*fixture)->factoryReferences();
    for (FixtureFault const fault : {FixtureFault::ComponentCreationFails, FixtureFault::ComponentCreationNull,
                                     FixtureFault::ComponentInitializeFails, FixtureFault::NoAudioProcessor,
                                     FixtureFault::ControllerClassIdFails, FixtureFault::ControllerCreationFails,
                                     FixtureFault::ControllerCreationNull, FixtureFault::ControllerInitializeFails}) {
        FixtureConfiguration configuration;
        Open(configuration.Fail(fault));
        EXPECT_FALSE(filter) << static_cast<int>(fault);
        EXPECT_EQ((*fixture)->liveObjects(), 0) << static_cast<int>(fault);
        EXPECT_EQ((*fixture)->factoryReferences(), references) << static_cast<int>(fault);
        EXPECT_THAT(fixture->CallTexts({"destroyed"}), Each(EndsWith("(0)"))) << "initialized and not terminated";
    }
}

TEST_F(FilterLifecycleTest, BadManifestsOfCountsAndTextsAreTakenAsNone) {
    FixtureConfiguration configuration;
    configuration.Fail(FixtureFault::UnterminatedTexts).Fail(FixtureFault::UnterminatedClassTexts);
    configuration.parameterCount = -5;
    configuration.inputCount = 2147483647;
    configuration.eventInputCount = -1;
    configuration.unitInfo = true;
    configuration.unitCount = 2147483647;
    configuration.programListCount = 2147483647;
    Open(configuration);
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->GetParameterCount(), 0);
    EXPECT_TRUE(filter->GetInputBuses().empty());
    EXPECT_EQ(filter->GetNumFactoryPresets(), 0);
    EXPECT_EQ(filter->GetOutputBuses().front().GetName().size(), 128u);
    Resume();
    SampleBlock out(2, 16);
    Render(out, out, 16);
    EXPECT_EQ(fixture->LastBlock().inputs.count, 0);
}

TEST_F(FilterLifecycleTest, UnsetRateAndBlockSizeReachThePluginAsDefaults) {
    Open({});
    FixtureCall const setup = fixture->Calls().back();
    EXPECT_STREQ(setup.name, "setupProcessing");
    EXPECT_EQ(setup.argument, 1024);
    EXPECT_EQ(setup.value, 44100.0);
    filter->SetRenderingContext(kRenderingContextOffline);
    filter->Resume();
    auto const calls = fixture->Calls();
    auto const last = std::find_if(calls.rbegin(), calls.rend(),
                                   [](FixtureCall const& call) { return std::string(call.name) == "setupProcessing"; });
    EXPECT_EQ(last->extra[0], 2);
}

TEST_F(FilterLifecycleTest, VersionTextsBecomeNumbers) {
    EXPECT_EQ(ParseSDKVersion(u"VST 3.6.8"), 0x030608u);
    EXPECT_EQ(ParseSDKVersion(u"vst 3.0.0"), 0x030000u);
    EXPECT_EQ(ParseSDKVersion(u"VST 3.6"), 0u);
    EXPECT_EQ(ParseSDKVersion(u"Travesty 3.7.4"), 0u);
    EXPECT_EQ(ParseSDKVersion(u""), 0u);
}

TEST_F(FilterLifecycleTest, DescriptorsTellWhatTheFilterAnswersOrWhatTheClassSays) {
    Open({.busAnswer = FixtureBusAnswer::MonoOnly});
    PluginLocator const locator(kTechnologyVST3, FixturePath16("configurable.vst3"));
    auto const asked = filter->CreateFilterDescriptor(locator, false);
    ASSERT_TRUE(asked);
    EXPECT_TRUE(asked->GetSupportsMono());
    EXPECT_FALSE(asked->GetSupportsStereo());
    EXPECT_EQ(asked->GetUniqueID(), fixture->UniqueID());
    EXPECT_EQ(asked->GetVendorString(), u"Fixture Works");
    auto const assumed = FindOrLoadVST3Module(FixturePath16("configurable.vst3"))
                             ->CreateDescriptorFromClassInfo(locator, fixture->UniqueID(), true);
    ASSERT_TRUE(assumed);
    EXPECT_TRUE(assumed->GetSupportsMono() && assumed->GetSupportsStereo());
    EXPECT_EQ(static_cast<int>(assumed->GetCategory()), 27);
}

} // namespace
