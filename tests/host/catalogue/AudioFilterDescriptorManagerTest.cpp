#include "CatalogueFixture.h"

#include "vynaudiofilterhost/catalogue/AudioFilterLegacyIDMapper.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

using namespace vyntest;
using Infos = std::vector<InfoPointer>;

/// The catalogue without any index: each answer by a walk.
struct PlainCatalogue {
    static bool HasEqual(Infos const& infos, InfoPointer const& info) {
        return std::ranges::any_of(infos, [&](auto const& other) { return *other == *info; });
    }

    void Add(InfoPointer const& info) {
        if (std::erase(all, info) != 0)
            ids.erase(info->GetUniqueID());
        std::erase(visible, info);
        if (!HasEqual(all, info)) {
            all.push_back(info);
            ids.emplace(info->GetUniqueID(), info);
        }
        if ((synths || !info->IsSynth()) && !HasEqual(visible, info))
            visible.push_back(info);
    }

    template <class Condition>
    bool Clear(Condition const& condition) {
        std::size_t const before = ids.size();
        std::erase_if(all, condition);
        visible = all;
        ids.clear();
        for (InfoPointer const& info : all)
            ids.emplace(info->GetUniqueID(), info);
        return ids.size() != before;
    }

    PropList Written() const {
        PropList list;
        int count = 0;
        for (InfoPointer const& info : all) {
            if (!info->IsInternal())
                info->Write(list.CreateList("descriptor" + std::to_string(count++)));
        }
        list.SetValue("num_descriptors", count);
        return list;
    }

    Infos all, visible;
    std::map<UString, InfoPointer> ids;
    bool synths = false;
};

class DescriptorManagerTest : public CatalogueTest {
protected:
    static PropList Written() {
        PropList list;
        catalogue.WriteExternalComponentDescriptors(list);
        return list;
    }
};

TEST_F(DescriptorManagerTest, AnswersAsOneThatWalksItsLists) {
    std::vector<UString> const ids = {u"a", u"b", u"c", u"d"};
    std::vector<UString> const paths = {u"/m/a.vst3", u"/m//a.vst3", u"/m/b.vst3", u"/m/./b.vst3", u"/m/c.vst3"};
    Infos pool;
    for (unsigned number = 0; number < 48; ++number) {
        bool const synth = number % 3 == 0;
        pool.push_back(number % 6 == 5 ? MakeInternal(ids[number % 4], number % 2, synth)
                                       : MakeExternal(ids[number % 4], number % 2, synth, paths[number % 5]));
    }
    PlainCatalogue plain;
    std::mt19937 random(20);
    for (int step = 0; step < 20000; ++step) {
        SCOPED_TRACE(step);
        InfoPointer const info = pool[random() % pool.size()];
        switch (random() % 40) {
        case 0:
            catalogue.ClearExternalInfos();
            plain.Clear([](auto const& other) { return !other->IsInternal(); });
            break;
        case 1:
        case 2:
            ASSERT_EQ(catalogue.ClearInfosForLocator(info->GetLocator()),
                      plain.Clear([&](auto const& other) { return other->GetLocator() == info->GetLocator(); }));
            break;
        case 3:
            catalogue.SetSynthsEnabled(plain.synths = !plain.synths);
            break;
        case 4:
            info->SetEnabled(!info->IsEnabled()); // two that differed may be equal now, and the other way round
            break;
        default:
            catalogue.AddAudioFilterDescriptor(info);
            plain.Add(info);
        }
        if (random() % 2 == 0)
            continue; // not every change is looked at
        ASSERT_EQ(Visible(), plain.visible);
        ASSERT_EQ(Written(), plain.Written());
        for (UString const& id : ids) {
            auto const found = plain.ids.find(id);
            ASSERT_EQ(catalogue.GetComponentDescriptorForID(id), found != plain.ids.end() ? found->second : nullptr);
        }
    }
}

TEST_F(DescriptorManagerTest, ALegacyIDStandsForItsCurrentOneWhoeverBearsIt) {
    catalogue.AddAudioFilterDescriptor(MakeExternal(u"old"));
    catalogue.AddAudioFilterDescriptor(MakeExternal(u"new"));
    AudioFilterLegacyIDMapper(u"old", u"new");
    AudioFilterLegacyIDMapper(u"old", u"other");
    AudioFilterLegacyIDMapper(u"ancient", u"old");
    AudioFilterLegacyIDMapper(u"elder", u"new");
    EXPECT_EQ(catalogue.GetComponentDescriptorForID(u"old")->GetUniqueID(), u"new");
    EXPECT_EQ(catalogue.GetComponentDescriptorForID(u"ancient")->GetUniqueID(), u"old") << "one step, not two";
    EXPECT_EQ(catalogue.GetCurrentID(u"old"), u"new");
    EXPECT_EQ(catalogue.GetCurrentID(u"new"), u"new");

    std::vector<UString> legacyIDs;
    EXPECT_FALSE(catalogue.GetLegacyIDs(u"ancient", legacyIDs));
    EXPECT_TRUE(catalogue.GetLegacyIDs(u"new", legacyIDs));
    EXPECT_TRUE(catalogue.GetLegacyIDs(u"ancient", legacyIDs)) << "it held something before";
    EXPECT_THAT(legacyIDs, ElementsAre(u"elder", u"old"));
}

TEST_F(DescriptorManagerTest, ReadingKeepsWhatIsKnownAndPassesOverWhatIsMissing) {
    PropList stored;
    stored.SetValue("num_descriptors", 0x7FFFFFFF); // as a damaged file may say
    MakeExternal(u"a", 2)->Write(stored.CreateList("descriptor0"));
    MakeExternal(u"j")->Write(stored.CreateList("descriptor10"));
    MakeExternal(u"c")->Write(stored.CreateList("descriptor2"));
    for (char const* const name :
         {"descriptor", "descriptor02", "descriptor-1", "descriptor2147483647", "descriptor1x"})
        MakeExternal(u"no")->Write(stored.CreateList(name));
    auto const known = MakeExternal(u"a", 1);
    catalogue.AddAudioFilterDescriptor(nullptr);
    catalogue.AddAudioFilterDescriptor(known);
    catalogue.AddAudioFilterDescriptor(MakeInternal(u"gain"));

    catalogue.ReadExternalComponentDescriptors(stored, true);
    auto const readIDs = [] {
        std::vector<UString> ids;
        for (auto const& info : Visible())
            ids.push_back(info->GetUniqueID());
        return ids;
    };
    EXPECT_THAT(readIDs(), ElementsAre(u"a", u"gain", u"c", u"j"));
    EXPECT_EQ(catalogue.GetComponentDescriptorForID(u"a"), known);
    catalogue.ReadExternalComponentDescriptors(stored, false);
    EXPECT_EQ(catalogue.GetComponentDescriptorForID(u"a")->GetVersion(), 2u);

    MakeExternal(u"x")->Write(stored.CreateList("descriptor1"));
    stored.CreateList("descriptor1").SetValue("stranger", 1);
    catalogue.WriteExternalComponentDescriptors(stored);
    EXPECT_EQ(*stored.FindList("descriptor1"), *Written().FindList("descriptor1")) << "a new section";
    catalogue.ReadExternalComponentDescriptors(PropList(), false);
    EXPECT_THAT(readIDs(), ElementsAre(u"gain"));
}

} // namespace
