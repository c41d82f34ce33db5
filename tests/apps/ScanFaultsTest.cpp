#include "apps/ScanFixture.h"

#include "os/Clock.h"
#include "vyncore/filesupport/File.h"
#include "vynhost/BackgroundSaver.h"

using namespace vyntest;
using nlohmann::json;

namespace {

// What goes wrong around the modules: others in the same child, the disk, the user, the machine.
class ScanFaultsTest : public ScanTest {};

TEST_F(ScanFaultsTest, WhatAModuleLeavesBehindCostsNoOther) {
    // In this order and as long as it goes in one child, the good ones last.
    std::uintmax_t length = 1 << 20;
    for (char const* const module : {"leaker", "printer", "stopper", "marker", "marked", "sleeper"}) {
        Add(module);
        Lengthen(module, length -= 1 << 16);
    }
    for (char const* const module : {"good", "better"})
        Add(module);
    auto const rows = Scan({"--timeout", "1.5"}, "1");
    for (char const* const module : {"leaker", "marker", "marked", "sleeper", "good", "better"})
        EXPECT_EQ(rows.at(module).at("verdict"), "filed") << rows.at(module);
    for (auto const& [module, reason] :
         {std::pair("printer", "printed more than"), {"stopper", "did not come to an end"}}) {
        EXPECT_EQ(rows.at(module).at("verdict"), "banned");
        EXPECT_NE(rows.at(module).at("reason").get<std::string>().find(reason), std::string::npos) << rows.at(module);
    }
}

TEST_F(ScanFaultsTest, AModuleCanNotSpeakForOthers) {
    Add("speaker");
    EXPECT_EQ(Scan({"--timeout", "0.2"}).at("speaker").at("verdict"), "banned");
    EXPECT_EQ(Content(kSettingsFile).find("other.vst3"), std::string::npos);
}

TEST_F(ScanFaultsTest, APluginStaysListedWhenOneOfTwoModulesThatHaveItGoesBad) {
    Add("good", "a");
    Add("good", "b");
    Scan();
    ASSERT_EQ(List().size(), 1u);
    std::string const holder = *List().begin();
    std::string const other = holder == "a" ? "b" : "a";
    Add("entrycrash", holder);
    auto const rows = Scan();
    EXPECT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows.at(holder).at("verdict"), "banned");
    EXPECT_EQ(rows.at(other).at("verdict"), "filed");
    EXPECT_EQ(List(), Names{other});
    EXPECT_EQ(Scan().at(other).at("verdict"), "known");
}

TEST_F(ScanFaultsTest, AnotherFileOfTheSameSizeAndTimeIsLookedAtAnew) {
    Add("good", "a");
    auto const size = 2 * std::filesystem::file_size(Path("a"));
    auto const time = std::filesystem::last_write_time(Path("a"));
    auto const make = [&](std::string const& module, std::string const& as) {
        Add(module, as);
        std::filesystem::resize_file(Path(as), size);
        std::filesystem::last_write_time(Path(as), time);
    };
    make("good", "a");
    make("entrycrash", "b");
    json const former = Scan().at("a").at("filters");
    make("better", "a");
    make("fork", "b");
    auto const rows = Scan();
    EXPECT_EQ(rows.at("a").at("verdict"), "filed");
    EXPECT_NE(rows.at("a").at("filters"), former);
    EXPECT_EQ(rows.at("b").at("verdict"), "filed");
}

TEST_F(ScanFaultsTest, MoreChildrenThanTheMachineHasRoomForAreNotMade) {
    for (int number = 0; number < 24; ++number)
        Add("good", std::to_string(number));
    ProgramResult const result = Run({"scan", "--jobs", "24", "--json"}, "ulimit -n 64;");
    EXPECT_EQ(result.status, 0) << result.err;
    json const document = json::parse(result.out);
    for (json const& row : document.at("modules"))
        EXPECT_EQ(row.at("verdict"), "filed") << row;
}

TEST_F(ScanFaultsTest, CtrlCAgainAndAgainLeavesNoModuleBanned) {
    for (char const* const module : {"good", "sleep"})
        Add(module);
    os::ChildProcess scan = StartScan({"--jobs", "2", "--timeout", "1000"});
    Await([&] { return List() == Names{"good"} && Bans() == Names{"sleep"}; });
    int const number = std::stoi(Content("vynhost.lock"));
    std::optional<os::ProcessEnd> end;
    for (std::uint64_t due = 0; !end; end = scan.TakeEnd()) {
        if (os::GetMonotonicNanos() < due)
            continue;
        ::kill(number, SIGINT);
        due = os::GetMonotonicNanos() + 1'000'000;
    }
    EXPECT_EQ(Bans(), Names{});
    EXPECT_EQ(List(), Names{"good"});
}

TEST_F(ScanFaultsTest, BansAreSavedWhenTheRestCanNotBe) {
    Add("good");
    Add("sleep");
    std::filesystem::remove(mHome.Path() / kSettingsFile);
    mHome.AddFolder(std::string(kSettingsFile) + "/folder");
    ProgramResult const result = Run({"scan", mPlugins.Path(), "--jobs", "2", "--timeout", "20"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(kSettingsFile), std::string::npos) << result.err;
    EXPECT_EQ(Bans(), Names{});
}

TEST_F(ScanFaultsTest, NamesThatAreNoTextAreTold) {
    std::filesystem::copy_file(vynfixtures::FixturePath("bad/good.vst3"), mPlugins.Path() / "caf\xE9.vst3");
    ProgramResult const result = Run({"scan", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(json::parse(result.out).at("modules").size(), 0u);
    EXPECT_NE(result.err.find("no UTF-8: " + mPlugins.Path().string()), std::string::npos) << result.err;
}

TEST(BackgroundSaverTest, ChangesAreSavedInATenthOfTheTimeAndTheLastIsNotLost) {
    TemporaryFolder const folder;
    vyncore::filesupport::File const file(folder.Path16("file"));
    constexpr std::uint64_t kCost = 2'000'000;
    constexpr int kTexts = 8;
    int made = 0;
    auto const makeText = [&made] {
        std::uint64_t const start = os::GetMonotonicNanos();
        while (os::GetMonotonicNanos() < start + kCost)
            ;
        return vyncore::UTF8String(std::to_string(++made));
    };
    vynhost::BackgroundSaver saver(file);
    EXPECT_EQ(saver.SaveWhenDue(makeText), std::nullopt);
    std::uint64_t const start = os::GetMonotonicNanos();
    while (made < kTexts) {
        saver.NoteChange();
        saver.SaveWhenDue(makeText);
    }
    EXPECT_GE(os::GetMonotonicNanos() - start, (kTexts - 1) * 10 * kCost);
    saver.NoteChange();
    EXPECT_NE(saver.SaveWhenDue(makeText), std::nullopt);
    saver.Finish(makeText);
    std::string text;
    std::ifstream(folder.Path() / "file") >> text;
    EXPECT_EQ(text, std::to_string(kTexts + 1));
}

} // namespace
