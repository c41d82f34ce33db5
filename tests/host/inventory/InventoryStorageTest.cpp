#include "host/inventory/InventoryFixture.h"

#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"

namespace {

using namespace vyntest;
using namespace vyncore::proplist::utils;

class InventoryStorageTest : public InventoryTest {
protected:
    /// Two modules, each with a filter, and two folders.
    static void FillAll() {
        inventory.AddPluginModuleInfo(MakeInfo(At(u"/b"), u"b"));
        inventory.AddPluginModuleInfo(MakeInfo(At(u"/a"), u"a", false));
        catalogue.AddAudioFilterDescriptor(MakeExternal(u"first"));
        catalogue.AddAudioFilterDescriptor(MakeExternal(u"second"));
        inventory.GetPluginTechnology(kSecond)->AddPluginDirectories({u"/y", u"/x"});
    }

    static PropList ListOf(vyncore::UTF8String const& xml) {
        PropList list;
        EXPECT_TRUE(ReadPropList(xml, list));
        return list;
    }

    static std::vector<UString> IDs() {
        std::vector<UString> ids;
        for (auto const& info : Visible())
            ids.push_back(info->GetUniqueID());
        return ids;
    }

    void Load(PropList const& list) {
        EXPECT_TRUE(SavePropList(FileNamed("given"), list));
        inventory.LoadConfiguration(FileNamed("given"));
    }
};

TEST_F(InventoryStorageTest, TheFileHoldsEverythingInItsOrder) {
    FillAll();
    File file = FileNamed("all");
    inventory.SaveConfiguration(file, true);
    PropList list;
    ASSERT_TRUE(LoadPropList(file.FullPath(), list, false));
    EXPECT_EQ(list, ListOf(inventory.GetConfigurationAsXML()));

    PropList expected;
    expected.SetValue("version", 2u);
    expected.SetValue("num_plugin_infos", 2);
    MakeInfo(At(u"/b"), u"b")->Write(expected.CreateList("plugin_info0"));
    MakeInfo(At(u"/a"), u"a", false)->Write(expected.CreateList("plugin_info1"));
    catalogue.WriteExternalComponentDescriptors(expected);
    PropList bare;
    File withoutFolders = FileNamed("bare");
    inventory.SaveConfiguration(withoutFolders, false);
    ASSERT_TRUE(LoadPropList(withoutFolders.FullPath(), bare, false));
    EXPECT_EQ(bare, expected);

    // The library's own technologies stand between the two of the test.
    auto const technologies = static_cast<int>(inventory.GetPluginTechnologies().size());
    int number = 0;
    ASSERT_TRUE(list.GetValue("num_tech_infos", number));
    EXPECT_EQ(number, technologies);
    PropList second;
    second.SetValue("tech_type", 50);
    second.SetValue("num_directories", 2);
    second.SetValue("directories0", UString(u"/y"));
    second.SetValue("directories1", UString(u"/x"));
    EXPECT_EQ(*list.FindList("tech_info" + std::to_string(technologies - 1)), second);
    ASSERT_TRUE(list.FindList("tech_info0")->GetValue("tech_type", number));
    EXPECT_EQ(number, -5);
}

TEST_F(InventoryStorageTest, AFileBringsBackWhatWasSavedInPlaceOfWhatIsThere) {
    FillAll();
    File all = FileNamed("all"), bare = FileNamed("bare");
    inventory.SaveConfiguration(all, true);
    inventory.SaveConfiguration(bare, false);
    for (File const& file : {all, bare}) {
        inventory.ClearAll(true);
        inventory.AddPluginModuleInfo(MakeInfo(At(u"/c"), u"c"));
        catalogue.AddAudioFilterDescriptor(MakeExternal(u"other"));
        inventory.GetPluginTechnology(kSecond)->AddPluginDirectories({u"/z"});
        TakeChanges();
        inventory.LoadConfiguration(file);
        EXPECT_EQ(TakeChanges(), 1);
        EXPECT_THAT(NamesInOrder(), ElementsAre(u"b", u"a"));
        EXPECT_FALSE(inventory.IsPluginEnabled(At(u"/a"), false));
        EXPECT_THAT(IDs(), ElementsAre(u"first", u"second"));
        if (&file == &all) {
            EXPECT_THAT(Folders(), ElementsAre(u"/y", u"/x"));
        }
    }
    EXPECT_THAT(Folders(), ElementsAre(u"/y", u"/x", u"/z")) << "nothing of folders in the file, nothing changed";
}

TEST_F(InventoryStorageTest, WithoutAFileOfThisVersionTheModulesStay) {
    FillAll();
    PropList stored = ListOf(inventory.GetConfigurationAsXML());
    PropList const current = stored;
    auto const check = [&](File const& file) {
        SCOPED_TRACE(testing::PrintToString(file.FullPath()));
        inventory.ClearAll(true);
        inventory.GetPluginTechnology(kSecond)->RemoveAllPluginDirectories();
        TakeChanges();
        inventory.LoadConfiguration(file);
        EXPECT_EQ(TakeChanges(), 1);
        EXPECT_TRUE(NamesInOrder().empty() && IDs().empty());
        EXPECT_THAT(Folders(), ElementsAre(u"/default")) << "a first start";
        inventory.GetPluginTechnology(kSecond)->RemoveAllPluginDirectories();
        inventory.AddPluginModuleInfo(MakeInfo(At(u"/kept"), u"kept"));
        catalogue.AddAudioFilterDescriptor(MakeExternal(u"gone"));
        inventory.LoadConfiguration(file);
        EXPECT_THAT(NamesInOrder(), ElementsAre(u"kept"));
        EXPECT_TRUE(IDs().empty() && Folders().empty());
    };
    check(FileNamed("missing"));
    check(File());
    check(FileNamed(""));
    for (auto const version : {1, 3, -2, 0}) {
        stored.SetValue("version", version);
        ASSERT_TRUE(SavePropList(FileNamed("other"), stored));
        check(FileNamed("other"));
    }
    stored.RemoveValue("version");
    ASSERT_TRUE(SavePropList(FileNamed("none"), stored));
    check(FileNamed("none"));
    vyncore::UTF8String const text = WritePropList(current);
    folder.AddFile("cut", text.substr(0, text.find_last_of('>')));
    check(FileNamed("cut"));
}

TEST_F(InventoryStorageTest, SectionsAreTakenAsFarAsTheyGo) {
    PropList stored;
    stored.SetValue("version", 2.0f);
    stored.SetValue("num_plugin_infos", 0x7FFFFFFF); // as a damaged file may say
    MakeInfo(At(u"/a"), u"early")->Write(stored.CreateList("plugin_info0"));
    MakeInfo(At(u"/b"), u"b")->Write(stored.CreateList("plugin_info3"));
    MakeInfo(At(u"/./a"), u"late")->Write(stored.CreateList("plugin_info20"));
    MakeInfo(At(u"/c"), u"c")->Write(stored.CreateList("plugin_info03"));
    stored.CreateList("plugin_info4").SetValue("name", UString(u"nowhere"));
    stored.SetValue("plugin_info5", 5);
    stored.SetValue("num_tech_infos", 9);
    stored.CreateList("tech_info0").SetValue("tech_type", 12345);
    PropList& folders = stored.CreateList("tech_info8");
    folders.SetValue("tech_type", 50);
    folders.SetValue("num_directories", 100);
    folders.SetValue("directories2", UString(u"/x"));
    folders.SetValue("directories10", UString(u"/y"));
    folders.SetValue("directories3", UString());
    folders.SetValue("directories4", 17);
    folders.SetValue("directories100", UString(u"/z"));
    Load(stored);
    EXPECT_THAT(NamesInOrder(), ElementsAre(u"b", u"nowhere", u"late"));
    EXPECT_EQ(inventory.FindPluginInfo(PluginLocator())->GetName(), u"nowhere");
    EXPECT_THAT(Folders(), ElementsAre(u"/x", u"/y"));

    for (int const count : {0, -1}) {
        stored.SetValue("num_plugin_infos", count);
        stored.SetValue("num_tech_infos", count);
        inventory.GetPluginTechnology(kSecond)->AddPluginDirectories({u"/new"});
        Load(stored);
        EXPECT_TRUE(NamesInOrder().empty());
        EXPECT_EQ(Folders().size(), 3u);
    }
}

TEST_F(InventoryStorageTest, AnotherConfigurationIsLaidOverWhatIsKnown) {
    FillAll();
    vyncore::UTF8String const xml = inventory.GetConfigurationAsXML();
    inventory.ClearAll(true);
    inventory.GetPluginTechnology(kSecond)->RemoveAllPluginDirectories();
    inventory.AddPluginModuleInfo(MakeInfo(At(u"/b"), u"old"));
    inventory.AddPluginModuleInfo(MakeInfo(At(u"/c"), u"c"));
    catalogue.AddAudioFilterDescriptor(MakeExternal(u"second", 5));
    TakeChanges();
    inventory.AddConfiguration(xml, false);
    EXPECT_EQ(TakeChanges(), 0);
    EXPECT_THAT(NamesInOrder(), ElementsAre(u"c", u"b", u"a"));
    EXPECT_THAT(IDs(), ElementsAre(u"second", u"first"));
    EXPECT_EQ(Visible().front()->GetVersion(), 5u);
    inventory.AddConfiguration("no list", true);
    EXPECT_EQ(TakeChanges(), 1);
    EXPECT_THAT(NamesInOrder(), ElementsAre(u"c", u"b", u"a"));
    EXPECT_TRUE(Folders().empty());
}

TEST_F(InventoryStorageTest, PrivateFiltersComeWithEveryLoadAndWin) {
    catalogue.AddAudioFilterDescriptor(MakeExternal(u"second", 9));
    catalogue.AddAudioFilterDescriptor(MakeExternal(u"private"));
    inventory.SetPrivatePluginConfiguration(inventory.GetConfigurationAsXML());
    inventory.ClearAll(true);
    EXPECT_TRUE(IDs().empty());
    inventory.ClearAll(false);
    EXPECT_THAT(IDs(), ElementsAre(u"second", u"private"));

    catalogue.ClearExternalInfos();
    FillAll();
    PropList const stored = ListOf(inventory.GetConfigurationAsXML());
    Load(stored);
    EXPECT_THAT(IDs(), ElementsAre(u"second", u"private", u"first"));
    EXPECT_EQ(Visible().front()->GetVersion(), 9u);
    TakeChanges();
    inventory.ClearAll(false);
    EXPECT_EQ(TakeChanges(), 0);
    inventory.LoadConfiguration(FileNamed("missing"));
    EXPECT_THAT(IDs(), ElementsAre(u"second", u"private"));
    inventory.SetPrivatePluginConfiguration("no list");
    inventory.ClearAll(false);
    EXPECT_TRUE(IDs().empty());
}

} // namespace
