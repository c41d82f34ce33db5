#include "apps/ScanFixture.h"

#include "vynhost/ScanFrame.h"
#include "vynhost/ScanRecords.h"

using namespace vyntest;
using nlohmann::json;
using vynhost::ScanFrame;
using vynhost::ScanFrameKind;
using vynhost::ScanFrameReader;

namespace {

class InventoryCommandsTest : public ScanTest {};

TEST_F(InventoryCommandsTest, PluginsAreNamedByIDNameOrPath) {
    Add("good");
    Add("better");
    Scan();
    std::map<std::string, std::string> ids;
    json const rows = RunForJSON({"list"});
    for (json const& row : rows) {
        EXPECT_EQ(row.at("name"), "Fixture");
        EXPECT_EQ(row.at("enabled"), true);
        ids[Title(row)] = row.at("id");
    }
    ASSERT_EQ(ids.size(), 2u);
    std::string upper = ids["good"];
    std::ranges::transform(upper, upper.begin(), [](unsigned char c) { return std::toupper(c); });
    for (std::string const& plugin : {ids["good"], upper, upper.substr(2), Path("good").string()})
        EXPECT_EQ(Title(RunForJSON({"info", plugin})), "good") << plugin;
    ProgramResult const several = Run({"params", "fixture"});
    EXPECT_EQ(several.status, 2);
    for (auto const& [module, id] : ids)
        EXPECT_NE(several.err.find(id), std::string::npos) << several.err;
    ProgramResult const none = Run({"presets", "Fix"});
    EXPECT_EQ(none.status, 3);
    EXPECT_NE(none.err.find("similar: \"Fixture\""), std::string::npos) << none.err;
}

TEST_F(InventoryCommandsTest, ModulesAreBannedAndAllowedAgainAndUnsupportedOnesRefused) {
    Add("good");
    Add("better");
    Scan();
    json const banned = RunForJSON({"ban", "add", "good.vst3", "--reason", "too loud"}).at("banned");
    ASSERT_EQ(banned.size(), 1u);
    EXPECT_EQ(banned[0].at("reason"), "too loud");
    EXPECT_EQ(banned[0].at("by"), "user");
    EXPECT_EQ(List(), Names{"better"});
    ProgramResult const refused = Run({"info", Path("good")});
    EXPECT_EQ(refused.status, 3);
    EXPECT_NE(refused.err.find("is banned: it too loud"), std::string::npos) << refused.err;
    // The user's word holds whatever becomes of the file.
    Add("fork", "good");
    EXPECT_EQ(Scan().at("good").at("verdict"), "banned");
    EXPECT_EQ(Run({"ban", "remove", Path("better")}).status, 1);
    Add("twins");
    Scan();
    EXPECT_EQ(Run({"ban", "add", "fixture"}).status, 2);
    EXPECT_EQ(Run({"ban", "add", mPlugins.Path() / "none.vst3"}).status, 3);
    RunForJSON({"ban", "remove", mPlugins.Path().string()});
    EXPECT_EQ(Bans(), Names{});
    EXPECT_EQ(Scan().at("good").at("verdict"), "filed");
    mHome.AddFile("PermanentAudioPlugInBlacklist.xml", R"(<pluginlist><plugin filename="BETTER.vst3"/></pluginlist>)");
    Add("fork", "better");
    json const row = Scan().at("better");
    EXPECT_EQ(row.at("verdict"), "refused");
    EXPECT_EQ(row.at("reason"), "is on the list of unsupported plug-ins");
    EXPECT_EQ(RunForJSON({"ban"}).at("unsupported"), (mHome.Path() / "PermanentAudioPlugInBlacklist.xml").string());
}

TEST_F(InventoryCommandsTest, FoldersAreToldAndThoseOfVST2Changed) {
    json const vst3{{"technology", "VST3"}, {"changeable", false}, {"folders", {mPlugins.Path().string()}}};
    json vst2{{"technology", "VST"}, {"changeable", true}, {"folders", json::array()}};
    EXPECT_EQ(RunForJSON({"dirs"}), (json{vst2, vst3}));
    TemporaryFolder const other;
    vst2["folders"] = {other.Path().string()};
    EXPECT_EQ(RunForJSON({"dirs", "add", other.Path()}), (json{vst2, vst3}));
    EXPECT_EQ(RunForJSON({"dirs"}), (json{vst2, vst3}));
    EXPECT_EQ(Run({"dirs", "remove", mPlugins.Path()}).status, 1);
    vst2["folders"] = json::array();
    EXPECT_EQ(RunForJSON({"dirs", "remove", other.Path()}), (json{vst2, vst3}));
    ProgramResult const usual = Run({"dirs", "reset", "--json"}, "VST_PATH=" + other.Path().string());
    json const folders = json::parse(usual.out).at(0).at("folders");
    EXPECT_EQ(folders.at(0), other.Path().string());
    EXPECT_GE(folders.size(), 2u);
}

TEST_F(InventoryCommandsTest, VST2ModulesAreScannedAndForgottenWithTheirFolder) {
    TemporaryFolder const other;
    for (char const* const module : {"configurable", "shell", "no-entry", "wrong-magic", "empty-shell", "notaplugin"})
        std::filesystem::copy(vynfixtures::FixturePath(std::string("vst/") + module + ".so"), other.Path());
    RunForJSON({"dirs", "add", other.Path()});
    auto const rows = Scan();
    EXPECT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows.at("configurable").at("verdict"), "filed");
    EXPECT_EQ(rows.at("configurable").at("reason"), nullptr);
    EXPECT_GE(rows.at("shell").at("filters").size(), 2u);
    for (auto const& [module, reason] : {std::pair("no-entry", "has no VST 2.x entry function"),
                                         {"wrong-magic", "is no VST 2.x effect"},
                                         {"empty-shell", "lists no plug-in"},
                                         {"notaplugin", "is no module"}}) {
        EXPECT_EQ(rows.at(module).at("verdict"), "refused") << rows.at(module);
        EXPECT_NE(rows.at(module).at("reason").get<std::string>().find(reason), std::string::npos) << rows.at(module);
    }
    EXPECT_EQ(List(), (Names{"configurable", "shell"}));
    RunForJSON({"dirs", "remove", other.Path()});
    EXPECT_EQ(List(), Names{});
}

TEST_F(InventoryCommandsTest, APrivateConfigurationIsBuiltUsedAndTakenOut) {
    TemporaryFolder const other;
    Add("good");
    std::string const file = mHome.Path() / "private.xml";
    json const built = RunForJSON({"config", "build", file, "--vst3", mPlugins.Path()});
    EXPECT_EQ(built.at("filters").size(), 1u);
    EXPECT_EQ(Content("private.xml").find(mPlugins.Path().string()), std::string::npos);
    json const used = RunForJSON({"config", "use", file, "--vst3", other.Path()});
    EXPECT_EQ(used.at("filters").at(0).at("path"), (other.Path() / "good.vst3").string());
    EXPECT_EQ(RunForJSON({"config"}), used);
    EXPECT_EQ(List(), Names{"good"});
    // A scan stores the catalogue while the private plug-ins are in it.
    EXPECT_EQ(Scan().at("good").at("verdict"), "filed");
    EXPECT_EQ(RunForJSON({"list"}).at(0).at("path"), (other.Path() / "good.vst3").string());
    RunForJSON({"config", "clear"});
    EXPECT_EQ(List(), Names{});
    EXPECT_EQ(Scan().at("good").at("verdict"), "filed");
    EXPECT_EQ(RunForJSON({"list"}).at(0).at("path"), Path("good").string());
    EXPECT_EQ(
        Run({"config", "build", "--vst3", mPlugins.Path(), "--", "-x.xml"}, "cd " + other.Path().string() + ";").status,
        0);
    EXPECT_TRUE(std::filesystem::exists(other.Path() / "-x.xml"));
    // What goes wrong leaves the file that is there.
    std::string const before = Content("private.xml");
    Add("entrycrash");
    ProgramResult const crashed = Run({"config", "build", file, "--vst3", mPlugins.Path()});
    EXPECT_EQ(crashed.status, 1);
    EXPECT_NE(crashed.err.find("was not built"), std::string::npos) << crashed.err;
    EXPECT_EQ(Content("private.xml"), before);
    EXPECT_EQ(Run({"config", "use", Path("good")}).status, 1);
    EXPECT_EQ(Run({"config", "build", file}).status, 2);
}

TEST(ScanFrameTest, FramesComeOutHoweverTheBytesAreCut) {
    std::string const long_(70000, 'x');
    std::string const bytes = EncodeScanFrame(ScanFrameKind::kReady, "") +
                              EncodeScanFrame(ScanFrameKind::kFiled, long_) +
                              EncodeScanFrame(ScanFrameKind::kDone, "\n");
    for (std::size_t const piece : {std::size_t{1}, std::size_t{7}, bytes.size()}) {
        ScanFrameReader reader;
        std::vector<ScanFrame> frames;
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            reader.Append(std::string_view(bytes).substr(at, piece));
            while (auto frame = reader.Next())
                frames.push_back(*frame);
        }
        ASSERT_EQ(frames.size(), 3u);
        EXPECT_EQ(frames[1].text, long_);
        EXPECT_EQ(frames[2].text, "\n");
        EXPECT_FALSE(reader.IsBroken());
    }
    for (std::string const& nonsense : {std::string("\xFF\xFF\xFF\xFF\x01", 5), std::string("\0\0\0\0\0", 5)}) {
        ScanFrameReader reader;
        reader.Append(nonsense);
        EXPECT_FALSE(reader.Next());
        EXPECT_TRUE(reader.IsBroken());
    }
}

TEST(ScanRecordsTest, RecordsComeBackAndDamagedOnesAreLeftOut) {
    using vynaudiofilterhost::PluginLocator;
    TemporaryFolder const folder;
    PluginLocator const module(vynaudiofilterhost::kTechnologyVST3, u"/a b/\u00FC.vst3");
    vynhost::ScanRecords records;
    records.Put(module, {.state = vynhost::ScanRecord::State::kBanned,
                         .reason = "line\nbreak",
                         .stamp = {.size = 0xFFFFFFFFFF, .changed = -5},
                         .time = 1LL << 40,
                         .tries = 2,
                         .filters = {"3:x", "3:y"}});
    records.Put(PluginLocator(vynaudiofilterhost::kTechnologyVST, u"/b"), {});
    vyncore::UTF8String text = records.GetText();
    auto const load = [&] {
        folder.AddFile("f", text);
        vynhost::ScanRecords loaded;
        loaded.Load(vyncore::filesupport::File(folder.Path16("f")));
        return loaded;
    };
    EXPECT_EQ(load().GetText(), text);
    EXPECT_EQ(load().Find(module)->stamp, records.Find(module)->stamp);
    text.replace(text.find("1099511627775"), 13, "10995116277750000000000000000");
    EXPECT_EQ(load().GetAll().size(), 1u);
    text.replace(text.find("<unsigned key=\"version\">1<"), 26, "<unsigned key=\"version\">2<");
    EXPECT_EQ(load().GetAll().size(), 0u);
    // Those of a former version know less of the file, which then is another one.
    vynhost::ScanRecord record{.stamp = {.size = 5, .changed = 6, .altered = 7, .object = 8}};
    records.Put(module, record);
    text = records.GetText();
    for (char const* const key : {"altered", "object"}) {
        std::string const start = "    <utf8 key=\"" + std::string(key);
        for (std::size_t line = text.find(start); line != std::string::npos; line = text.find(start))
            text.erase(line, text.find('\n', line) + 1 - line);
    }
    EXPECT_EQ(load().Find(module)->stamp, (os::FileStamp{.size = 5, .changed = 6}));
}

} // namespace
