#include "CatalogueFixture.h"

#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/catalogue/AudioFilterRegistrar.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/Library.h"

#include <utility>

namespace {

using namespace vyntest;
using vyncore::utility::Guid;

/// Filters of the tests' kind bear the ID that their creation function was given.
class CreateAudioFilterTest : public CatalogueTest {
protected:
    CreateAudioFilterTest() {
        factory.RegisterFactoryFunction(kKind, [](UString const& id) { return new AudioFilter(id, u"first"); });
    }

    static void Add(UString const& id, bool synth = false) {
        catalogue.AddAudioFilterDescriptor(MakeExternal(id, 1, synth));
    }

    static UString IDOf(boost::intrusive_ptr<AudioFilter> const& filter) {
        return filter ? filter->GetID() : UString(u"none");
    }

    static inline AudioFilterFactory& factory = AudioFilterFactory::GetInstance();
};

TEST_F(CreateAudioFilterTest, OlderFormsOfAnIDAreFound) {
    Add(u"2:1517179725 SimpleMastering");
    Add(u"2:1517179725 Second");
    Add(u"4:moved");
    Add(u"2:moved");
    Add(u"2:99 Hidden", true);
    struct {
        char16_t const* asked;
        char16_t const* created;
        char16_t const* createdByFactory; ///< it is handed the ID as it was asked for
    } const cases[] = {
        {u"", u"none", u"none"},
        {u"2:1517179725 Second", u"2:1517179725 Second", u"2:1517179725 Second"},
        {u"1517179725 SimpleMastering", u"2:1517179725 SimpleMastering", u"1517179725 SimpleMastering"},
        {u"moved", u"4:moved", u"moved"},
        {u"2:1517179725 Renamed", u"2:1517179725 SimpleMastering", u"none"},
        {u"2:1517179725 ", u"2:1517179725 SimpleMastering", u"none"},
        {u"2:151717972 SimpleMastering", u"none", u"none"},
        {u"2:15171797255 SimpleMastering", u"none", u"none"},
        {u"2:1517179725", u"none", u"none"},
        {u"1517179725 Renamed", u"none", u"none"},
        {u"2:99 Hidden", u"2:99 Hidden", u"2:99 Hidden"},
        {u"2:99 Renamed", u"none", u"none"},
    };
    for (auto const& [asked, created, createdByFactory] : cases) {
        EXPECT_EQ(IDOf(utility::CreateAudioFilter(asked)), created);
        EXPECT_EQ(IDOf(factory.CreateAudioFilter(asked)), createdByFactory);
    }
}

TEST_F(CreateAudioFilterTest, ADisabledFilterIsMadeByTheFactoryAloneAndSoIsOneOfADisabledModule) {
    Add(u"a");
    catalogue.GetComponentDescriptorForID(u"a")->SetEnabled(false);
    EXPECT_FALSE(utility::CreateAudioFilter(u"a"));
    EXPECT_TRUE(factory.CreateAudioFilter(u"a"));

    Add(u"b");
    auto& inventory = PluginModuleInfoManager::GetInstance();
    PluginLocator const module = catalogue.GetComponentDescriptorForID(u"b")->GetLocator();
    inventory.AddPluginModuleInfo(new PluginModuleInfo(module, u"B", u"", 1, kTechnologyVST3, false, false));
    EXPECT_FALSE(utility::CreateAudioFilter(u"b"));
    EXPECT_TRUE(factory.CreateAudioFilter(u"b"));
    inventory.ClearAll(true);
}

TEST_F(CreateAudioFilterTest, TheFirstFunctionOfAKindStaysAndAnEmptyOneThrows) {
    Add(u"a");
    factory.RegisterFactoryFunction(kKind, [](UString const& id) { return new AudioFilter(id, u"second"); });
    EXPECT_EQ(utility::CreateAudioFilter(u"a")->GetDisplayName(), u"first");

    Guid const other(0, 0, 0, {1});
    catalogue.AddAudioFilterDescriptor(new AudioFilterDescriptor(u"", 0, kCategoryEffect, u"b", other, 0, 0, 0));
    EXPECT_FALSE(utility::CreateAudioFilter(u"b"));
    factory.RegisterFactoryFunction(other, {});
    EXPECT_THROW(utility::CreateAudioFilter(u"b"), boost::bad_function_call);
}

TEST_F(CreateAudioFilterTest, InternalFiltersComeInWithEachStartOfTheLibrary) {
    static bool available = false, wantsMore = true;
    auto const make = [](UString const& id) { return new AudioFilter(id, u"internal"); };
    AudioFilterRegistrar([] { return available ? MakeInternal(u"first", 1, true) : nullptr; }, make);
    AudioFilterRegistrar(
        [make] {
            if (std::exchange(wantsMore, false))
                AudioFilterRegistrar([] { return MakeInternal(u"third"); }, make);
            return MakeInternal(u"second");
        },
        make);
    Initialize(false);
    EXPECT_FALSE(utility::CreateAudioFilter(u"first"));
    EXPECT_TRUE(utility::CreateAudioFilter(u"second"));
    EXPECT_TRUE(utility::CreateAudioFilter(u"third"));
    available = true;
    Initialize(true);
    EXPECT_FALSE(utility::CreateAudioFilter(u"first") || catalogue.AreSynthsEnabled()) << "a second start only counts";
    Terminate();
    Terminate();
    Initialize(true);
    EXPECT_TRUE(utility::CreateAudioFilter(u"first"));
    ASSERT_EQ(Visible().size(), 3u);
    EXPECT_EQ(Visible().back()->GetUniqueID(), u"first") << "synths were enabled before it was added";
    Terminate();
}

} // namespace
