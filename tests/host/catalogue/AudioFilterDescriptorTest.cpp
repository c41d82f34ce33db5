#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"

#include "host/HostTest.h"

#include <utility>

namespace {

using namespace vyntest;
using vyncore::utility::Guid;

PluginLocator const kModule(kTechnologyVST3, u"/p/a.vst3");
Guid const kFactory(0xEB0FED8B, 0x7841, 0x4F2B, {0xA6, 0x55, 0xD8, 0xCD, 0xDE, 0xA9, 0xF4, 0x65});

AudioFilterDescriptor External(PluginLocator const& locator) {
    return {locator, u"Name", u"Vendor", 0x80000000u, kCategoryVst3Delay, u"3:1234", kFactory, true};
}

TEST(AudioFilterDescriptorTest, AnInternalFilterStartsWithWhatItsMakerGives) {
    AudioFilterDescriptor const descriptor(u"Gain", 3, kCategoryEffect, u"gain", kFactory, false, true, true);
    EXPECT_TRUE(descriptor.IsInternal());
    EXPECT_EQ(descriptor.GetVendorString(), u"Tolve Systems");
    EXPECT_EQ(descriptor.GetLocator().ToString(), u"1:");
    EXPECT_TRUE(descriptor.IsEnabled());
    EXPECT_TRUE(descriptor.GetSupportsGanging());
    EXPECT_FALSE(descriptor.GetSupportsMono() || descriptor.GetSupportsStereo());
    EXPECT_TRUE(descriptor.GetSupportsThreadSafeInitialization());
    EXPECT_TRUE(descriptor.IsDynamicChannelizationDisabled());
}

TEST(AudioFilterDescriptorTest, TheStoredKeysAreThoseThatFilesHoldAndMakeAnEqualCopy) {
    auto descriptor = External(kModule);
    descriptor.SetEnabled(false);
    descriptor.SetSupportsMono(true);
    PropList expected;
    expected.SetValue("locator", vyncore::UString(u"3:/p/a.vst3"));
    expected.SetValue("name", vyncore::UString(u"Name"));
    expected.SetValue("vendor", vyncore::UString(u"Vendor"));
    expected.SetValue("version", 0x80000000u);
    expected.SetValue("category", 12);
    expected.SetValue("id", vyncore::UString(u"3:1234"));
    expected.SetValue("factory_guid", vyncore::UString(kFactory.AsString()));
    for (auto const& [key, value] : {std::pair("enabled", false), {"synth", true}, {"mono", true}, {"stereo", false}})
        expected.SetValue(key, value);
    PropList list;
    descriptor.Write(list);
    EXPECT_EQ(list, expected);

    AudioFilterDescriptor const copy(list);
    EXPECT_TRUE(copy == descriptor);
    EXPECT_TRUE(copy.GetLocator() == kModule);
    EXPECT_EQ(copy.GetFactoryGuid(), kFactory);
    EXPECT_EQ(copy.GetCategoryName(), u"Delay");
    EXPECT_TRUE(copy.IsSynth());
    descriptor.SetSupports51(true);
    EXPECT_FALSE(copy == descriptor) << "a flag that isn't stored";
}

TEST(AudioFilterDescriptorTest, TheModulesPlaceDoesNotCountInComparisonAndEveryFlagDoes) {
    auto const one = External(kModule);
    EXPECT_TRUE(one == External(PluginLocator(kTechnologyVST3, u"/elsewhere/a.vst3")));

    for (auto const setter : {&AudioFilterDescriptor::SetSupportsMono, &AudioFilterDescriptor::SetSupportsStereo,
                              &AudioFilterDescriptor::SetSupports51, &AudioFilterDescriptor::SetSupportsMulti}) {
        auto other = External(kModule);
        (other.*setter)(true);
        EXPECT_FALSE(one == other);
    }
    for (auto const setter : {&AudioFilterDescriptor::SetEnabled, &AudioFilterDescriptor::SetSupportsGanging}) {
        auto other = External(kModule);
        (other.*setter)(false);
        EXPECT_FALSE(one == other);
    }
}

TEST(AudioFilterDescriptorTest, MissingKeysClearPlaceCategoryAndFactoryAlone) {
    AudioFilterDescriptor const empty{PropList()};
    EXPECT_TRUE(empty.IsEnabled() && empty.GetSupportsGanging());
    EXPECT_FALSE(empty.IsInternal() || empty.IsSynth());

    auto descriptor = External(kModule);
    PropList list;
    list.SetValue("vendor", vyncore::UString(u"Other"));
    list.SetValue("factory_guid", vyncore::UString(u"no GUID"));
    descriptor.Read(list);
    EXPECT_EQ(descriptor.GetVendorString(), u"Other");
    EXPECT_EQ(descriptor.GetName(), u"Name");
    EXPECT_EQ(descriptor.GetVersion(), 0x80000000u);
    EXPECT_TRUE(descriptor.GetLocator() == PluginLocator());
    EXPECT_EQ(descriptor.GetCategory(), kCategoryNone);
    EXPECT_EQ(descriptor.GetFactoryGuid(), Guid());
}

} // namespace
