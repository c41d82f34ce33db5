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

TEST_F(InventoryCommandsTest, ModulesAreBannedAndAllowedAgain) {
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
}

TEST_F(InventoryCommandsTest, UnsupportedModulesAreRefused) {
    Add("good");
    mHome.AddFile("PermanentAudioPlugInBlacklist.xml", R"(<pluginlist><plugin filename="GOOD.vst3"/></pluginlist>)");
    json const row = Scan().at("good");
    EXPECT_EQ(row.at("verdict"), "refused");
    EXPECT_EQ(row.at("reason"), "is on the list of unsupported plug-ins");
    EXPECT_EQ(RunForJSON({"ban"}).at("unsupported"), (mHome.Path() / "PermanentAudioPlugInBlacklist.xml").string());
}

TEST_F(InventoryCommandsTest, FoldersAreTold) {
    json const folders = RunForJSON({"dirs"});
    EXPECT_EQ(folders.at(0).at("technology"), "VST3");
    EXPECT_EQ(folders.at(0).at("folders"), json::array({mPlugins.Path().string()}));
    EXPECT_EQ(folders.at(0).at("changeable"), false);
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
    RunForJSON({"config", "clear"});
    EXPECT_EQ(List(), Names{});
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
}

} // namespace
