#include "host/inventory/InventoryFixture.h"
#include "vyncore/strings/StringUtils.h"

#include <csignal>
#include <fstream>
#include <functional>
#include <iterator>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace vyntest;

enum class Death { kKilled, kDone, kUntraceable };

// Does the work in a process that is killed at its so-manieth stop: it stops before and after each system call.
Death KillAt(int stop, std::function<void()> const& work) {
    pid_t const child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(1);
        ::raise(SIGSTOP);
        work();
        ::_exit(0);
    }
    int status = 0;
    for (int stops = 0; ::waitpid(child, &status, 0) == child && WIFSTOPPED(status); ++stops) {
        if (stops == stop)
            ::kill(child, SIGKILL);
        else
            ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    if (WIFSIGNALED(status))
        return Death::kKilled;
    return WEXITSTATUS(status) == 0 ? Death::kDone : Death::kUntraceable;
}

std::string Content(File const& file) {
    std::ifstream stream(vyncore::string::UTF16to8(file.FullPath()), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class SaveKillTest : public InventoryTest {
protected:
    static void FillFiles(int count) {
        for (int number = 0; number < count; ++number) {
            vyncore::UString const path = u"/" + vyncore::string::UTF8to16(std::to_string(number));
            inventory.AddPluginModuleInfo(MakeInfo(At(path)));
            bans.AddBannedPlugin(At(path));
        }
    }

    // Killed at each of its stops, the save leaves the one file or the other.
    void ExpectOneOrTheOther(File const& file, std::function<void()> const& save, std::string const& former,
                             std::string const& next) {
        int seen = 0;
        for (int stop = 1;; ++stop) {
            std::ofstream(vyncore::string::UTF16to8(file.FullPath()), std::ios::binary) << former;
            Death const death = KillAt(stop, save);
            if (death == Death::kUntraceable)
                GTEST_SKIP() << "processes may not be traced here";
            std::string const content = Content(file);
            ASSERT_TRUE(content == former || content == next) << "killed at stop " << stop;
            seen |= content == next ? 2 : 1;
            if (death == Death::kDone)
                break;
        }
        EXPECT_EQ(seen, 3);
    }
};

TEST_F(SaveKillTest, AKilledSaveLeavesTheOldFileOrTheNewOne) {
    File settings = FileNamed("settings");
    File list = FileNamed("bans");
    auto const saveSettings = [&] { inventory.SaveConfiguration(settings, true); };
    auto const saveBans = [&] { bans.SaveConfiguration(list); };
    FillFiles(3);
    saveSettings();
    saveBans();
    std::string const formerSettings = Content(settings);
    std::string const formerBans = Content(list);
    FillFiles(200);
    saveSettings();
    saveBans();
    ExpectOneOrTheOther(settings, saveSettings, formerSettings, Content(settings));
    ExpectOneOrTheOther(list, saveBans, formerBans, Content(list));
}

} // namespace
