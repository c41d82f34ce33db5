#include "apps/ScanFixture.h"

using namespace vyntest;
using nlohmann::json;

namespace {

struct BadModule {
    char const* name;
    char const* verdict;
    char const* reason; ///< part of it
};

constexpr BadModule kBadModules[]{
    {"good", "filed", ""},
    {"better", "filed", ""},
    {"staticabort", "banned", ""},
#ifndef VYN_DLOPEN_MAY_NOT_THROW
    {"staticthrow", "refused", "threw"},
#endif
    {"entrycrash", "banned", ""},
    {"loop", "banned", "did not come to an end"},
    {"sleep", "banned", "did not come to an end"},
    {"exit", "banned", "exited with status 0"},
    {"entrythrow", "refused", "threw"},
    {"threadabort", "banned", ""},
    {"latecrash", "banned", "was unloaded"},
    {"fork", "filed", ""},
    {"twoprocesses", "filed", ""},
    {"stack", "banned", ""},
    {"memory", "banned", ""},
    {"print", "filed", ""},
    {"flood", "banned", "printed more than"},
    {"input", "filed", ""},
    {"symbol", "refused", "VynFixtureSymbolOfNobody"},
    {"nofactory", "refused", "no VST3 factory"},
    {"negative", "refused", "holds no class"},
    {"countless", "refused", "holds no class"},
    {"names", "filed", ""},
    {"twins", "filed", ""},
    {"makecrash", "banned", ""},
    {"unloadcrash", "banned", "while it was unloaded"},
    {"chatter", "banned", "answered with what is no answer"},
};

std::string Reason(json const& row) {
    return row.at("reason").is_null() ? "" : row.at("reason").get<std::string>();
}

TEST_F(ScanTest, EachModuleCostsItselfAndASecondScanOpensNone) {
    for (BadModule const& module : kBadModules)
        Add(module.name);
    // Each the first in its child, side by side, so that they are waited for once.
    Lengthen("loop", 1 << 20);
    Lengthen("sleep", 1 << 20);
    auto const first = Scan({"--timeout", "5", "--memory", "400"});
    auto const second = Scan({"--timeout", "5"});
    Names const listed = List();
    Names const banned = Bans();
    for (auto const& [name, verdict, reason] : kBadModules) {
        json const& row = first.at(name);
        bool const filed = verdict == std::string("filed");
        EXPECT_EQ(row.at("verdict"), verdict) << row;
        EXPECT_NE(Reason(row).find(reason), std::string::npos) << row;
        EXPECT_EQ(Reason(row).empty(), filed) << row;
        EXPECT_EQ(row.at("filters").size(), filed ? 1u : 0u) << row;
        EXPECT_EQ(listed.count(name), filed ? 1u : 0u) << name;
        EXPECT_EQ(banned.count(name), verdict == std::string("banned") ? 1u : 0u) << name;
        EXPECT_EQ(second.at(name).at("verdict"), filed ? "known" : verdict);
        EXPECT_EQ(second.at(name).at("seconds"), 0.0) << name;
        EXPECT_EQ(second.at(name).at("filters"), row.at("filters"));
        EXPECT_EQ(second.at(name).at("reason"), row.at("reason"));
    }
    EXPECT_EQ(first.size(), std::size(kBadModules));
    EXPECT_EQ(second.size(), std::size(kBadModules));
}

TEST_F(ScanTest, TheDeathOfTheScanLeavesTheListRight) {
    for (char const* const module : {"good", "better", "sleep", "fork"})
        Add(module);
    for (int turn = 1; turn <= 2; ++turn) {
        os::ChildProcess scan = StartScan({"--jobs", "2", "--timeout", "1000"});
        Await([&] { return List().size() == 3 && Bans() == Names{"sleep"}; });
        scan.Kill();
        EXPECT_EQ(Bans(), Names{"sleep"});
        EXPECT_EQ(List(), (Names{"good", "better", "fork"}));
    }
    // Twice is enough: not opened again, and said why.
    auto const rows = Scan();
    EXPECT_EQ(rows.at("sleep").at("verdict"), "banned");
    EXPECT_EQ(rows.at("sleep").at("seconds"), 0.0);
    EXPECT_NE(Reason(rows.at("sleep")).find("ended from outside"), std::string::npos);
    EXPECT_EQ(rows.at("good").at("verdict"), "known");
}

TEST_F(ScanTest, AModuleThatWasOpenWhenAScanDiedIsTriedOnceMore) {
    Add("sleep");
    {
        os::ChildProcess scan = StartScan({"--timeout", "1000"});
        Await([&] { return Bans() == Names{"sleep"}; });
    }
    json const row = Scan({"--timeout", "0.2"}).at("sleep");
    EXPECT_EQ(row.at("verdict"), "banned");
    EXPECT_GE(row.at("seconds"), 0.2);
    EXPECT_NE(Reason(row).find("did not come to an end within 0.2 seconds"), std::string::npos);
}

TEST_F(ScanTest, OneScanAtATimeAndCtrlCEndsItInOrder) {
    for (char const* const module : {"good", "sleep", "staticabort"})
        Add(module);
    os::ChildProcess first = StartScan({"--jobs", "2", "--timeout", "1000"});
    Await([&] { return List() == Names{"good"} && Bans() == Names{"sleep", "staticabort"}; });
    std::string const number = Content("vynhost.lock");
    for (auto const& arguments : {std::vector<std::string>{"scan"}, {"ban", "remove", "sleep.vst3"}}) {
        ProgramResult const second = Run(arguments);
        EXPECT_EQ(second.status, 1);
        EXPECT_NE(second.err.find("another vynhost (process " + number.substr(0, number.size() - 1)), std::string::npos)
            << second.err;
    }
    ASSERT_EQ(::kill(std::stoi(number), SIGINT), 0);
    std::string told;
    Await([&] {
        first.Read(os::ChildProcess::Stream::kErrors, told, 10000);
        return first.TakeEnd().has_value();
    });
    first.Read(os::ChildProcess::Stream::kErrors, told, 10000);
    EXPECT_EQ(first.TakeEnd()->Describe(), "exited with status 1");
    EXPECT_EQ(told, "vynhost: interrupted: 2 of 3 modules were opened, and are saved\n");
    EXPECT_EQ(Bans(), Names{"staticabort"});
    EXPECT_EQ(List(), Names{"good"});
}

TEST_F(ScanTest, FilesThatChangeAreLookedAtAnew) {
    Add("entrycrash", "a");
    Add("good", "b");
    Add("better", "c");
    Add("nofactory", "d");
    Scan();
    EXPECT_EQ(Bans(), Names{"a"});
    Add("fork", "a");
    Add("exit", "b");
    Add("twins", "d");
    std::filesystem::remove(Path("c"));
    auto const rows = Scan();
    char const* const verdicts[]{"filed", "banned", "vanished", "filed"};
    for (int module = 0; module < 4; ++module)
        EXPECT_EQ(rows.at(std::string(1, static_cast<char>('a' + module))).at("verdict"), verdicts[module]) << module;
    EXPECT_EQ(Bans(), Names{"b"});
    EXPECT_EQ(List(), (Names{"a", "d"}));
    EXPECT_EQ(Scan().size(), 3u);
}

TEST_F(ScanTest, AFolderIsScannedByItselfAndTheRestStays) {
    TemporaryFolder const other;
    Add("good");
    Scan();
    std::filesystem::copy(vynfixtures::FixturePath("bad/better.vst3"), other.Path() / "better.vst3");
    auto const rows = Scan({other.Path()});
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows.at("better").at("verdict"), "filed");
    std::filesystem::remove(Path("good"));
    EXPECT_EQ(Scan({other.Path()}).size(), 1u);
    EXPECT_EQ(List(), (Names{"good", "better"}));
    // What was found on demand is known to an ordinary scan, as long as it is there.
    EXPECT_EQ(Scan().at("better").at("verdict"), "known");
    EXPECT_EQ(List(), Names{"better"});
    std::filesystem::remove(other.Path() / "better.vst3");
    EXPECT_EQ(Scan().at("better").at("verdict"), "vanished");
    EXPECT_EQ(Run({"scan", mPlugins.Path() / "none"}).status, 1);
}

TEST_F(ScanTest, WhereNothingCanBeWrittenTheOldFilesStay) {
    Add("good");
    Scan();
    std::string const settings = Content(kSettingsFile);
    Add("better");
    ProgramResult const full = Run({"scan"}, "ulimit -f 1;");
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.err.find("written"), std::string::npos) << full.err;
    EXPECT_EQ(Content(kSettingsFile), settings);
    EXPECT_EQ(Scan().at("better").at("verdict"), "filed");
    EXPECT_EQ(Bans(), Names{});
    std::filesystem::create_directory(mHome.Path() / "file");
    ProgramResult const none = RunVynhost({"scan"}, "VYNHOST_HOME=/proc/none");
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.err.find("/proc/none: cannot be made"), std::string::npos) << none.err;
}

TEST_F(ScanTest, FilesThatCanNotBeReadAreKeptAside) {
    Add("good");
    Scan();
    mHome.AddFile(kSettingsFile, "no property list");
    mHome.AddFile(kBanFile, "<proplist version=\"1\"><unsigned key=\"version\">7</unsigned></proplist>");
    mHome.AddFile("ScanRecords.xml", "");
    mHome.AddFile(".vyn-999999999-1.tmp", "left behind");
    mHome.AddFile(kPrivateFile, "<proplist version=\"1\"/>");
    EXPECT_EQ(List(), Names{});
    EXPECT_EQ(Scan({mPlugins.Path()}).at("good").at("verdict"), "filed");
    EXPECT_EQ(Content(std::string(kSettingsFile) + ".unreadable"), "no property list");
    EXPECT_EQ(Content(std::string(kPrivateFile) + ".unreadable"), "<proplist version=\"1\"/>");
    EXPECT_TRUE(std::filesystem::exists(mHome.Path() / (std::string(kBanFile) + ".unreadable")));
    EXPECT_FALSE(std::filesystem::exists(mHome.Path() / ".vyn-999999999-1.tmp"));
}

TEST_F(ScanTest, PluginsThatTheSystemInstalledAreFiled) {
    if (!std::filesystem::exists("/usr/lib/vst3/ZamVerb.vst3"))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    auto const first = Scan({"/usr/lib/vst3"});
    auto const second = Scan({"/usr/lib/vst3"});
    EXPECT_GE(first.size(), 17u);
    for (auto const& [name, row] : first) {
        EXPECT_EQ(row.at("verdict"), "filed") << row;
        EXPECT_EQ(second.at(name).at("verdict"), "known");
        EXPECT_EQ(second.at(name).at("seconds"), 0.0);
    }
    json const compressor = RunForJSON({"info", "zamcompx2"});
    EXPECT_EQ(compressor.at("name"), "ZamCompX2");
    json const rows = RunForJSON({"list"});
    for (json const& row : rows) {
        if (row.at("id") != compressor.at("id"))
            continue;
        for (auto const& [key, value] : row.items())
            EXPECT_EQ(compressor.at(key), value) << key;
    }
}

} // namespace
