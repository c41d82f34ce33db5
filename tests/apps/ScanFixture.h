#pragma once

#include "apps/RunVynhost.h"
#include "os/ChildProcess.h"
#include "support/FixtureModule.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <set>
#include <thread>

namespace vyntest {

inline constexpr char const* kSettingsFile = "AudioPluginManagerSettings.xml";
inline constexpr char const* kBanFile = "DynamicAudioPlugInBlacklist.xml";
inline constexpr char const* kPrivateFile = "PrivatePlugins.xml";

/// A folder with modules of the test's choice, and one for what vynhost keeps; the program is run over both. VST 2.x
/// plug-ins are searched for in no folder: those of this machine are none of the test's business.
class ScanTest : public testing::Test {
protected:
    using json = nlohmann::json;
    using Names = std::set<std::string>;

    ScanTest() {
        mHome.AddFile(kSettingsFile, R"(<proplist version="1">
            <unsigned key="version">2</unsigned><int key="num_tech_infos">1</int>
            <list key="tech_info0"><int key="tech_type">2</int><int key="num_directories">0</int></list>
        </proplist>)");
    }

    /// Puts a copy of a module of tests/plugins/BadModule.cpp into the folder.
    void Add(std::string const& module, std::string const& as = {}) const {
        std::filesystem::copy_file(vynfixtures::FixturePath("bad/" + module + ".vst3"), Path(as.empty() ? module : as),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    /// Makes the module's file so much longer, which has it opened before others and changes nothing else.
    void Lengthen(std::string const& module, std::uintmax_t bytes) const {
        std::filesystem::resize_file(Path(module), std::filesystem::file_size(Path(module)) + bytes);
    }

    std::filesystem::path Path(std::string const& module) const { return mPlugins.Path() / (module + ".vst3"); }

    ProgramResult Run(std::vector<std::string> const& arguments, std::string const& shell = {}) const {
        return RunVynhost(arguments,
                          shell + " VYNHOST_HOME=" + mHome.Path().string() + " VST3_PATH=" + mPlugins.Path().string());
    }

    json RunForJSON(std::vector<std::string> arguments) const {
        arguments.push_back("--json");
        ProgramResult const result = Run(arguments);
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        return json::parse(result.out, nullptr, false);
    }

    /// The rows of a scan by the titles of the modules.
    std::map<std::string, json> Scan(std::vector<std::string> const& more = {}, std::string const& jobs = "2") const {
        std::vector<std::string> arguments{"scan", "--jobs", jobs};
        arguments.insert(arguments.end(), more.begin(), more.end());
        std::map<std::string, json> rows;
        json const document = RunForJSON(arguments);
        for (json const& row : document.at("modules"))
            rows[Title(row)] = row;
        return rows;
    }

    static std::string Title(json const& row) {
        return std::filesystem::path(row.at("path").get<std::string>()).stem();
    }

    static Names Titles(json const& rows) {
        Names names;
        for (json const& row : rows)
            names.insert(Title(row));
        return names;
    }

    Names Bans() const { return Titles(RunForJSON({"ban"}).at("banned")); }
    Names List() const { return Titles(RunForJSON({"list"})); }

    /// A scan that goes on while the test does.
    os::ChildProcess StartScan(std::vector<std::string> const& more = {}) const {
        std::vector<std::string> arguments{"ASAN_OPTIONS=detect_leaks=0",
                                           "VYNHOST_HOME=" + mHome.Path().string(),
                                           "HOME=" + mHome.Path().string(),
                                           "VST3_PATH=" + mPlugins.Path().string(),
                                           GetVynhostPath(),
                                           "scan"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return {"/usr/bin/env", arguments};
    }

    static void Await(std::function<bool()> const& condition) {
        for (int turn = 0; turn < 4000 && !condition(); ++turn)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        ASSERT_TRUE(condition());
    }

    std::string Content(std::string const& name) const { return ReadText(mHome.Path() / name); }

    TemporaryFolder mPlugins;
    TemporaryFolder mHome;
};

} // namespace vyntest
