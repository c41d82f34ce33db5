#include "host/inventory/InventoryFixture.h"

#include "vyncore/filesupport/FileDeleteException.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

namespace {

using namespace vyntest;
using namespace vyncore::proplist::utils;

class BannedPluginManagerTest : public InventoryTest {
protected:
    static Locators Banned() { return {bans.BannedBegin(), bans.BannedEnd()}; }

    void Load(PropList const& list) {
        File file = FileNamed("given");
        EXPECT_TRUE(SavePropList(file, list));
        bans.LoadConfiguration(file);
    }

    bool LoadStatic(std::string_view content) {
        folder.AddFile("static", content);
        File file = FileNamed("static");
        return bans.LoadStaticConfiguration(file);
    }

    static bool Refuses(char16_t const* fileName, char16_t const* id = u"none", char16_t const* version = u"0") {
        return bans.IsPluginBannedStatically(fileName, id, version);
    }
};

TEST_F(BannedPluginManagerTest, TheListIsStoredInItsOrderAndComesBack) {
    Locators const locators = {At(u"/odd", kFirst), At(u"C:\\b:1.so", kTechnologyVST), At(u"/c.vst3", kTechnologyVST3)};
    for (PluginLocator const& locator : {locators[2], locators[0], locators[1], At(u"/./c.vst3", kTechnologyVST3)})
        bans.AddBannedPlugin(locator);
    EXPECT_EQ(Banned(), locators);
    EXPECT_TRUE(bans.IsPluginBanned(At(u"//c.vst3", kTechnologyVST3)));
    EXPECT_FALSE(bans.IsPluginBanned(At(u"/c.vst3", kTechnologyVST)));

    File file = FileNamed("bans");
    bans.SaveConfiguration(file);
    PropList stored;
    ASSERT_TRUE(LoadPropList(file.FullPath(), stored, false));
    PropList expected;
    expected.SetValue("version", 1u);
    expected.SetValue("num_banned_plugin_files", 3);
    expected.SetValue("banned_plugin_files0", UString(u"-5:/odd"));
    expected.SetValue("banned_plugin_files1", UString(u"2:C:\\b:1.so"));
    expected.SetValue("banned_plugin_files2", UString(u"3:/c.vst3"));
    EXPECT_EQ(stored, expected);

    bans.RemoveBannedPlugin(At(u"/odd/", kFirst));
    bans.RemoveBannedPlugin(At(u"/none"));
    bans.AddBannedPlugin(At(u"/new"));
    EXPECT_EQ(Banned().size(), 3u);
    bans.LoadConfiguration(file);
    EXPECT_EQ(Banned(), locators);
    EXPECT_FALSE(bans.IsPluginBanned(At(u"/new")));

    expected.SetValue("num_banned_plugin_files", 0);
    Load(expected);
    EXPECT_TRUE(Banned().empty());
    EXPECT_FALSE(bans.IsPluginBanned(locators[0]));
    File nowhere(folder.Path16());
    EXPECT_THROW(bans.SaveConfiguration(nowhere), vyncore::filesupport::file_delete_exception);
}

TEST_F(BannedPluginManagerTest, ADamagedListIsTakenAsFarAsItGoesOrNotAtAll) {
    PropList stored;
    stored.SetValue("version", 1);
    stored.SetValue("num_banned_plugin_files", 0x7FFFFFFF);
    stored.SetValue("banned_plugin_files0", UString(u"3:/a"));
    stored.SetValue("banned_plugin_files2", UString(u"no locator"));
    stored.SetValue("banned_plugin_files3", UString());
    stored.SetValue("banned_plugin_files4", 4);
    stored.SetValue("banned_plugin_files12", UString(u"x:/b"));
    stored.SetValue("banned_plugin_files13", UString(u"3:/./a"));
    Load(stored);
    Locators const read = {PluginLocator(), At(u"/b", kTechnologyNone), At(u"/a", kTechnologyVST3)};
    EXPECT_EQ(Banned(), read);
    EXPECT_EQ(Banned().back().GetPath(), u"/a") << "the first of two equal ones";

    for (int const version : {2, 0, -1}) {
        PropList other;
        other.SetValue("version", version);
        Load(other);
        EXPECT_EQ(Banned(), read);
    }
    File missing = FileNamed("missing");
    bans.LoadConfiguration(missing);
    vyncore::UTF8String const text = WritePropList(stored);
    folder.AddFile("cut", text.substr(0, text.find_last_of('>')));
    File cut = FileNamed("cut");
    bans.LoadConfiguration(cut);
    EXPECT_EQ(Banned(), read);
}

TEST_F(BannedPluginManagerTest, AnEntryOfTheStaticListMatchesAsFarAsItSays) {
    ASSERT_TRUE(LoadStatic(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE pluginlist>
<pluginlist kind="any">
  <plugin filename="ANY.Dll" note="passed over"/>
  <plugin filename="id.dll" uniqueid="1A"/> text
  <group><plugin filename="version.dll" uniqueid="7" version="2.0"><plugin filename="inner&amp;.dll"/></plugin></group>
  <plugin filename="id.dll" uniqueid="" version="3"/>
  <plugin filename="one.vst3" uniqueid="none" version="0"/>
  <plugin uniqueid="1"/><plugin filename=""/><Plugin filename="case.dll"/><plugins filename="other.dll"/>
</pluginlist>)"));
    EXPECT_TRUE(Refuses(u"any.dll") && Refuses(u"aNY.dLL", u"5", u"6"));
    EXPECT_TRUE(Refuses(u"ID.dll", u"1a", u"9") && Refuses(u"id.dll", u"5", u"3"));
    EXPECT_FALSE(Refuses(u"id.dll", u"5", u"9") || Refuses(u"id.dll", u"1aa", u"9"));
    EXPECT_TRUE(Refuses(u"version.dll", u"7", u"2.0") && Refuses(u"inner&.dll"));
    EXPECT_FALSE(Refuses(u"version.dll", u"7", u"2") || Refuses(u"version.dll", u"8", u"2.0"));
    EXPECT_TRUE(Refuses(u"one.vst3"));
    EXPECT_FALSE(Refuses(u"one.vst3", u"77", u"0"));
    EXPECT_FALSE(Refuses(u"") || Refuses(u"case.dll") || Refuses(u"other.dll") || Refuses(u"any") ||
                 Refuses(u"\u00C4"));
    ASSERT_TRUE(LoadStatic("<pluginlist><plugin uniqueid='1'/></pluginlist>"));
    EXPECT_FALSE(Refuses(u"any.dll")) << "the new list takes the place of the old one";
}

TEST_F(BannedPluginManagerTest, ADamagedStaticListLeavesTheOldOne) {
    ASSERT_TRUE(LoadStatic("<plugin filename='old'/>"));
    std::string const whole = "<list><plugin filename='new' version='1'/><a>&lt;</a></list>";
    for (std::size_t length = 0; length < whole.size(); ++length)
        ASSERT_FALSE(LoadStatic(whole.substr(0, length))) << length;
    for (char const* const text :
         {"<plugin filename='new'/><plugin filename='new'/>", "<plugin filename='new'/>x", "<plugin filename='&x;'/>",
          "<plugin filename='new' filename='old'/>", "<a>&</a>", "<a>\x01</a>", "<a>\xFF</a>", "<a b></a>", "<a></b>"})
        EXPECT_FALSE(LoadStatic(text)) << text;
    File missing = FileNamed("missing"), none, itsFolder = FileNamed("");
    for (File* const file : {&missing, &none, &itsFolder})
        EXPECT_FALSE(bans.LoadStaticConfiguration(*file));
    EXPECT_TRUE(Refuses(u"old"));
    EXPECT_FALSE(Refuses(u"new"));
    EXPECT_TRUE(LoadStatic(whole));
    EXPECT_TRUE(LoadStatic("<e/>"));
}

TEST_F(BannedPluginManagerTest, TheLibraryProposesNamesForTheFiles) {
    EXPECT_EQ(bans.GetSettingsFileName(), u"DynamicAudioPlugInBlacklist.xml");
    EXPECT_EQ(bans.GetPermanentBannedSettingsFileName(), u"PermanentAudioPlugInBlacklist.xml");
    EXPECT_EQ(inventory.GetSettingsFileName(), u"AudioPluginManagerSettings.xml");
}

} // namespace
