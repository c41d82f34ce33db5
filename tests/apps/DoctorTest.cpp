#include "apps/ScanFixture.h"
#include "support/VirtualDisplay.h"

#include <gmock/gmock.h>

using namespace vyntest;
using nlohmann::json;
using testing::HasSubstr;

namespace {

class DoctorTest : public ScanTest {
protected:
    /// The document of an examination.
    json Examine(std::vector<std::string> arguments, int status, std::string const& shell = {}) const {
        arguments.insert(arguments.begin(), {"doctor", "--json"});
        ProgramResult const result = Run(arguments, "unset DISPLAY; " + shell);
        EXPECT_EQ(result.status, status) << result.out << result.err;
        return json::parse(result.out, nullptr, false);
    }

    /// The row of an effect that is in the one trouble or other.
    json ExamineEffect(std::string const& trouble, std::string const& shell = {}) const {
        json const document =
            Examine({VYNHOST_TROUBLE_EFFECT, "--timeout", "1"}, 1, shell + " TROUBLE='" + trouble + "'");
        return document.at("plugins").at(0);
    }

    static std::string Remarks(json const& row, char const* step) {
        json const none = json::object();
        return row.at("steps").value(step, none).value("remarks", json::array()).dump();
    }
};

TEST_F(DoctorTest, WhatOneModuleDoesToItsProcessIsToldWithItsStepAndCostsNoOther) {
    struct Case {
        char const* module;
        char const* verdict;
        char const* step;
        char const* remark;
    };
    constexpr Case kCases[]{
        {"good", "fine", "scan", "[]"},
        {"better", "fine", "teardown", "[]"},
        {"entrycrash", "failed", "scan", "SIGSEGV"},
        {"makecrash", "failed", "scan", "SIGSEGV"},
        {"entrythrow", "failed", "scan", "\""},
        {"exit", "failed", "scan", "exited with status 0"},
        {"sleep", "failed", "scan", "did not come to an end within 1 seconds"},
        {"flood", "failed", "scan", "printed more than 16 MiB"},
        {"speaker", "failed", "scan", "answered with what is no answer"},
        {"unloadcrash", "misbehaves", "teardown", "SIGSEGV"},
    };
    for (Case const& wanted : kCases)
        Add(wanted.module);
    json const document = Examine({"--timeout", "1"}, 1);
    ASSERT_EQ(document.at("plugins").size(), std::size(kCases));
    std::map<std::string, json> rows;
    for (json const& row : document.at("plugins"))
        rows[Title(row)] = row;
    for (Case const& wanted : kCases) {
        SCOPED_TRACE(rows.at(wanted.module));
        EXPECT_EQ(rows.at(wanted.module).at("verdict"), wanted.verdict);
        EXPECT_THAT(Remarks(rows.at(wanted.module), wanted.step), HasSubstr(wanted.remark));
    }
    EXPECT_TRUE(std::filesystem::is_regular_file(mHome.Path() / kSettingsFile));
    EXPECT_FALSE(std::filesystem::exists(mHome.Path() / kBanFile));
}

TEST_F(DoctorTest, AStepThatMisbehavesLeavesTheOthersTheirTurn) {
    struct Case {
        char const* trouble;
        char const* step;
        char const* remark;
    };
    constexpr Case kCases[]{
        {"crash in a block", "render", "SIGSEGV"},
        {"give no number", "render", "gives what is no number in 47 of 47 blocks of 512 samples"},
        {"learn its latency", "render", "a latency of 0 samples, and 100 when"},
        {"round up", "render", "floating-point mode"},
        {"drift", "state", "parameter 3"},
    };
    for (Case const& wanted : kCases) {
        json const row = ExamineEffect(wanted.trouble);
        SCOPED_TRACE(row);
        EXPECT_EQ(row.at("verdict"), "misbehaves");
        EXPECT_THAT(Remarks(row, wanted.step), HasSubstr(wanted.remark));
        EXPECT_EQ(row.at("steps").size(), 6u);
        EXPECT_EQ(row.at("steps").at("info").at("verdict"), "fine");
        EXPECT_EQ(row.at("steps").at("editor").at("verdict"), "skipped");
    }
}

TEST_F(DoctorTest, AnEditorIsWatchedToo) {
    VirtualDisplay const display;
    if (display.GetName().empty())
        GTEST_SKIP() << "the package xvfb is not installed";
    std::string const shell = "DISPLAY=" + display.GetName();
    EXPECT_THAT(Remarks(ExamineEffect("", shell), "editor"), HasSubstr("blank"));
    json const hung = ExamineEffect("hang", shell);
    EXPECT_THAT(Remarks(hung, "editor"), HasSubstr("within 1 seconds"));
    EXPECT_EQ(hung.at("steps").at("teardown").at("verdict"), "fine");
}

TEST_F(DoctorTest, EachPluginOfAModuleHasARowAndBannedModulesAreExaminedWhenTheyAreNamed) {
    std::string const shells = vynfixtures::FixturePath("shell.vst3");
    json const plugins = Examine({shells, shells}, 0).at("plugins");
    ASSERT_EQ(plugins.size(), 2u);
    EXPECT_NE(plugins[0].at("id"), plugins[1].at("id"));

    Add("good");
    Add("entrycrash");
    Scan();
    json const sweep = Examine({}, 0);
    EXPECT_EQ(sweep.at("plugins").size(), 1u);
    EXPECT_EQ(sweep.at("passedOver"), json::array({Path("entrycrash")}));
    EXPECT_EQ(Examine({Path("entrycrash")}, 1).at("plugins").size(), 1u);
    Examine({"nobody has this name"}, 3);
}

} // namespace
