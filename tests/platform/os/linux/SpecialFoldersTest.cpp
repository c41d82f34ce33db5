#include "os/SpecialFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace {

/// Sets an environment variable for one test (null takes it away) and puts the old value back.
class ScopedVariable {
public:
    ScopedVariable(char const* name, char const* value) : mName(name) {
        if (char const* const before = std::getenv(name))
            mBefore = before;
        Set(value);
    }
    ~ScopedVariable() { Set(mBefore ? mBefore->c_str() : nullptr); }

private:
    void Set(char const* value) const { value ? setenv(mName, value, 1) : unsetenv(mName); }

    char const* mName;
    std::optional<std::string> mBefore;
};

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
}

TEST(SpecialFoldersTest, WithoutAVariableTheAccountNamesTheHome) {
    ScopedVariable const home("HOME", nullptr);
    EXPECT_TRUE(os::GetHomeFolder().starts_with(u'/'));
}

} // namespace
