#include "FilterFixture.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/VST3/src/IVirtualAudioFilterSupport.h"

namespace {

using namespace vyntest;

using FilterHostServicesTest = FilterTest;

FixtureConfiguration VendorPlugin() {
    FixtureConfiguration configuration;
    configuration.vendorInterfaces = true;
    configuration.latency = 64;
    return configuration;
}

TEST_F(FilterHostServicesTest, BothHalvesMeetTheSameHostAtInitialize) {
    Open({});
    ASSERT_TRUE(filter);
    FixtureSnapshot const& seen = fixture->Snapshot();
    unsigned const services =
        kHostApplication | kComponentHandler | kComponentHandler2 | kUnitHandler | kVendorHost | kRunLoop;
    EXPECT_EQ(seen.componentHostAnswers, services);
    EXPECT_EQ(seen.controllerHostAnswers, services);
    EXPECT_EQ(std::u16string_view(seen.hostName, 10), std::u16string_view(u"Veltrano\0?", 10));
    // A message asked for as a message, a list as a list, and no other pair.
    EXPECT_EQ(seen.instancesMade, 0b0000'0000'0010'0001u);
    EXPECT_EQ(seen.instancesRefused, 0b1111'1111'1101'1110u);
}

TEST_F(FilterHostServicesTest, MessageOfTheControllerReachesItsComponent) {
    Open({});
    fixture->ClearCalls();
    EXPECT_EQ((*fixture)->callHost(FixtureHostCall::SendMessage, 7, 0.0), 0);
    EXPECT_THAT(fixture->CallTexts({"notify"}), ElementsAre("Component.notify(7)"));
}

TEST_F(FilterHostServicesTest, PluginLearnsTheApplicationsLocale) {
    Open({});
    void* found = nullptr;
    static_cast<Steinberg::Vst::IHostApplication&>(*filter).queryInterface(vst3::IVST3TolveVendorSpecificHost::iid,
                                                                           &found);
    ASSERT_NE(found, nullptr);
    auto* const host = static_cast<vst3::IVST3TolveVendorSpecificHost*>(found);
    EXPECT_STREQ(host->GetLocale(), "en_US");
    EXPECT_EQ(host->GetLanguageCode(), 0);
    PluginModule::SetLocaleIdentifier(u"de_DE");
    EXPECT_STREQ(host->GetLocale(), "de_DE");
    EXPECT_EQ(host->GetLanguageCode(), 1);
    PluginModule::SetLocaleIdentifier(u"en_US");
}

TEST_F(FilterHostServicesTest, VendorsDisplayNameWinsWhenItIsOne) {
    struct Case {
        char const* text;
        unsigned length;
        bool terminated;
        char16_t const* shown;
    };
    for (Case const& row :
         {Case{"Own Name", 8, true, u"Own Name"}, Case{"Own Name", 8, false, u"Own Name"},
          Case{"Own Name", 3, false, u"Own"}, Case{"\xC3\x96l", 3, true, u"\u00D6l"}, Case{"", 5, true, u"Fixture"},
          Case{"Own Name", 0, true, u"Fixture"}, Case{"Own Name", 0xFFFFFFFF, true, u"Fixture"}}) {
        FixtureConfiguration configuration = VendorPlugin();
        SetFixtureText(configuration.vendorName, std::string_view(row.text));
        configuration.vendorNameLength = row.length;
        configuration.vendorNameTerminated = row.terminated;
        Open(configuration);
        ASSERT_TRUE(filter);
        EXPECT_EQ(filter->GetDisplayName(), row.shown) << row.text << ' ' << row.length;
        EXPECT_EQ(fixture->CountCalls("releaseVendor"), 1) << "the component's, at once";
        filter.reset();
    }
}

TEST_F(FilterHostServicesTest, NameAndVendorComeFromTheNextBestPlace) {
    PluginLocator const locator(kTechnologyVST3, FixturePath16("configurable.vst3"));
    FixtureConfiguration unnamed;
    SetFixtureText(unnamed.vendor, std::string_view());
    Open(unnamed);
    EXPECT_EQ(filter->CreateFilterDescriptor(locator, false)->GetVendorString(), u"Fixture Factory");
    FixtureConfiguration silent;
    Open(silent.Fail(FixtureFault::FactoryInfoFails));
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->GetDisplayName(), u"Fixture");
    EXPECT_EQ(filter->CreateFilterDescriptor(locator, false)->GetVendorString(), u"");
    for (int const level : {1, 2}) {
        Open({.factoryLevel = level});
        EXPECT_EQ(filter->GetDisplayName(), u"Fixture") << level;
    }
}

TEST_F(FilterHostServicesTest, VendorsControllerAndProcessorGoBeforeAllElse) {
    Open(VendorPlugin());
    fixture->ClearCalls();
    filter.reset();
    EXPECT_THAT(fixture->CallTexts({"releaseVendor", "disconnect", "setComponentHandler", "terminate"}),
                ElementsAre("Controller.releaseVendor()", "Component.releaseVendor()", "Component.disconnect(1)",
                            "Controller.disconnect(1)", "Controller.setComponentHandler(0)", "Controller.terminate()",
                            "Component.terminate()"));
}

TEST_F(FilterHostServicesTest, VirtualFilterQuestionsPassThroughToTheVendorsProcessorIfThereIsOne) {
    for (auto const& [present, answer] : {std::pair(true, true), std::pair(true, false), std::pair(false, true)}) {
        FixtureConfiguration configuration = VendorPlugin();
        configuration.vendorInterfaces = present;
        configuration.vendorAnswer = answer;
        Open(configuration);
        auto* const support = dynamic_cast<vst3::IVirtualAudioFilterSupport*>(static_cast<AudioFilter*>(filter.get()));
        ASSERT_NE(support, nullptr);
        fixture->ClearCalls();
        bool const answers = present && answer;
        std::int64_t first = 5, count = 6;
        EXPECT_EQ(support->IsVirtualAudioFilterSupported(), present);
        EXPECT_EQ(support->BeginVirtualPass(100, 1), answers);
        EXPECT_EQ(support->EndVirtualPass(), answers);
        EXPECT_EQ(support->GetInputRange(200, 2, first, count), answers);
        EXPECT_EQ(support->InvalidateInputRange(300, 3), answers);
        EXPECT_EQ(support->IsOutputRangeReady(1LL << 40, 4), answers);
        EXPECT_EQ(std::pair(first, count), answers ? std::pair(std::int64_t{190}, std::int64_t{12})
                                                   : std::pair(std::int64_t{5}, std::int64_t{6}));
        std::vector<std::string> const asked{"Component.BeginVirtualPass(100)", "Component.EndVirtualPass(0)",
                                             "Component.GetInputRange(200)", "Component.InvalidateInputRange(300)",
                                             "Component.IsOutputRangeReady(1099511627776)"};
        EXPECT_EQ(fixture->CallTexts(), present ? asked : std::vector<std::string>());
        for (FixtureCall const& call : fixture->Calls())
            EXPECT_EQ(call.extra[0], call.argument == 1LL << 40 ? 4 : call.argument / 100);
        EXPECT_EQ(support->GetVirtualLatency(), 64);
    }
}

} // namespace
