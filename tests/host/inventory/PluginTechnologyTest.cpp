#include "vynaudiofilterhost/inventory/PluginTechnology.h"

#include "host/HostTest.h"

namespace {

using namespace vyntest;
using vyncore::filesupport::Dir;
using Folders = PluginTechnology::Directories;

/// One firing of the signal: what was added, what was removed, and the folders at that moment.
struct Change {
    Folders added, removed, present;
    bool operator==(Change const&) const = default;
};

class PluginTechnologyTest : public testing::Test {
protected:
    boost::intrusive_ptr<PluginTechnology> Make(PluginTechnology::DefaultDirectoriesFunction const& defaults,
                                                bool usesDirectories) {
        auto const collect = [](Dir const& folder) {
            return std::vector<PluginLocator>{PluginLocator(kTechnologyVST, folder.FullPath())};
        };
        boost::intrusive_ptr<PluginTechnology> technology(
            new PluginTechnology(kTechnologyVST, collect, {}, defaults, {}, usesDirectories));
        technology->GetDirectoriesChangedSignal().connect(
            [this](auto const& from, Folders const& added, Folders const& removed) {
                changes.push_back({added, removed, FoldersOf(*from)});
            });
        return technology;
    }

    static Folders FoldersOf(PluginTechnology const& technology) {
        return {technology.DirectoryBegin(), technology.DirectoryEnd()};
    }

    std::vector<Change> Take() { return std::exchange(changes, {}); }

    std::vector<Change> changes;
};

TEST_F(PluginTechnologyTest, AChangeIsAnnouncedOnceWithTheListAsItWasGiven) {
    auto const technology = Make({}, true);
    technology->AddPluginDirectories({u"/b", u"/a", u"/b"});
    EXPECT_THAT(Take(), ElementsAre(Change{{u"/b", u"/a", u"/b"}, {}, {u"/b", u"/a", u"/b"}}));
    technology->AddPluginDirectories({u"/a", u"/A", u"/a/"});
    EXPECT_THAT(Take(), ElementsAre(Change{{u"/a", u"/A", u"/a/"}, {}, {u"/b", u"/a", u"/b", u"/A", u"/a/"}}));
    technology->AddPluginDirectories({u"/a", u"/a"});
    technology->AddPluginDirectories({});
    technology->RemovePluginDirectories({u"/none"});
    EXPECT_THAT(Take(), ElementsAre());
    technology->RemovePluginDirectories({u"/none", u"/b", u"/a"});
    EXPECT_THAT(Take(), ElementsAre(Change{{}, {u"/none", u"/b", u"/a"}, {u"/b", u"/A", u"/a/"}}));
    technology->RemoveAllPluginDirectories();
    EXPECT_THAT(Take(), ElementsAre(Change{{}, {u"/b", u"/A", u"/a/"}, {}}));
    technology->RemoveAllPluginDirectories();
    EXPECT_THAT(Take(), ElementsAre());
}

TEST_F(PluginTechnologyTest, AResetGivesBackTheDefaultsOfAFormatThatHasSome) {
    auto const defaults = [] { return Folders{u"/d"}; };
    auto const technology = Make(defaults, true);
    technology->ResetDirectoriesToDefault();
    EXPECT_THAT(Take(), ElementsAre(Change{}, Change{{u"/d"}, {}, {u"/d"}}));
    technology->ResetDirectoriesToDefault();
    EXPECT_THAT(Take(), ElementsAre(Change{{}, {u"/d"}, {u"/d"}}, Change{{u"/d"}, {}, {u"/d"}}));
    for (auto const& without : {Make({}, true), Make(defaults, false)}) {
        without->AddPluginDirectories({u"/a"});
        Take();
        without->ResetDirectoriesToDefault();
        EXPECT_THAT(Take(), ElementsAre(Change{{}, {u"/a"}, {u"/a"}}));
    }
}

TEST_F(PluginTechnologyTest, ASlotMayChangeTheFoldersThatItIsToldOf) {
    auto const technology = Make([] { return Folders{u"/d"}; }, true);
    technology->GetDirectoriesChangedSignal().connect([](auto const& from, Folders const& added, Folders const&) {
        if (added != Folders{u"/late"})
            from->AddPluginDirectories({u"/late"});
    });
    technology->ResetDirectoriesToDefault();
    EXPECT_EQ(FoldersOf(*technology), (Folders{u"/d", u"/late"}));
    technology->RemoveAllPluginDirectories();
    EXPECT_EQ(FoldersOf(*technology), (Folders{u"/late"}));
    EXPECT_EQ(changes.back().added, (Folders{u"/late"}));
}

TEST_F(PluginTechnologyTest, ModulesAreCollectedInEachFolderOrWhereTheFormatLooks) {
    auto const technology = Make({}, true);
    EXPECT_TRUE(technology->CollectPlugins().empty());
    technology->AddPluginDirectories({u"/b", u"/a", u"/b"});
    std::vector<UString> paths;
    for (PluginLocator const& found : technology->CollectPlugins())
        paths.push_back(found.GetPath());
    EXPECT_THAT(paths, ElementsAre(u"/b", u"/a", u"/b"));

    auto const alone = Make({}, false);
    alone->AddPluginDirectories({u"/a"});
    EXPECT_THAT(alone->CollectPlugins(), ElementsAre(PluginLocator(kTechnologyVST, u"")));
    EXPECT_EQ(alone->GetPathDisplayString(u"/a"), u"/a");
    EXPECT_THROW(alone->CreateScanContext(), boost::bad_function_call);
    EXPECT_TRUE(PluginTechnology(kTechnologyVST, {}, {}, {}, {}, true).CollectPlugins().empty());
}

} // namespace
