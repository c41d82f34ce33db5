#include "os/SpecialFolders.h"
#include "support/ScopedVariable.h"

#include <gtest/gtest.h>

namespace {

using vyntest::ScopedVariable;

TEST(SpecialFoldersTest, TheEnvironmentDecidesUnlessItsPathIsRelative) {
    ScopedVariable const home("HOME", "/home/somebody/");
    {
        ScopedVariable const config("XDG_CONFIG_HOME", "/elsewhere//");
        ScopedVariable const temporary("TMPDIR", "/var/tmp/");
        EXPECT_EQ(os::GetPreferencesFolder(), u"/elsewhere");
        EXPECT_EQ(os::GetTemporaryFolder(), u"/var/tmp");
    }
    ScopedVariable const config("XDG_CONFIG_HOME", "relative");
    ScopedVariable const temporary("TMPDIR", "");
    EXPECT_EQ(os::GetPreferencesFolder(), u"/home/somebody/.config");
    EXPECT_EQ(os::GetTemporaryFolder(), u"/tmp");
    EXPECT_EQ(os::GetHomeFolder(), u"/home/somebody");
    ScopedVariable const none("HOME", nullptr);
    EXPECT_TRUE(os::GetHomeFolder().starts_with(u'/')) << "the account names it";
}

} // namespace
