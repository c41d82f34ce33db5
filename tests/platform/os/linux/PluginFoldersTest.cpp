#include "os/PluginFolders.h"
#include "support/ScopedVariable.h"
#include "vyncore/strings/StringUtils.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::ElementsAre;
using vyntest::ScopedVariable;

TEST(PluginFoldersTest, AVariableTakesThePlaceOfTheUsualFolders) {
    ScopedVariable const home("HOME", "/home/somebody");
    {
        ScopedVariable const path("VST3_PATH", nullptr);
        EXPECT_THAT(os::GetVST3Folders(),
                    ElementsAre(u"/home/somebody/.vst3", u"/usr/lib/vst3", u"/usr/local/lib/vst3"));
    }
    std::u16string const here = vyncore::string::UTF8to16(std::filesystem::current_path().native());
    ScopedVariable const path("VST3_PATH", ":/b//c/./::/:a:/a");
    EXPECT_THAT(os::GetVST3Folders(), ElementsAre(u"/b/c", u"/", here + u"/a", u"/a"));
    ScopedVariable const none("VST3_PATH", "");
    EXPECT_TRUE(os::GetVST3Folders().empty());
}

} // namespace
