#include "os/FileContent.h"

#include "os/FileSystem.h"
#include "os/ModuleLoader.h"
#include "support/TemporaryFolder.h"
#include "vyncore/utility/FileUtils.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using vyntest::TemporaryFolder;

// Whoever opens a pipe waits for its other end, so a hang here is the failure.
TEST(FileContentTest, OnlyOrdinaryFilesWithinTheBoundAreReadAndAPipeIsNeverOpened) {
    TemporaryFolder const folder;
    std::string const content("a\r\n\0b", 5);
    folder.AddFile("f", content);
    folder.AddFile("empty");
    folder.AddLink("link", "f");
    EXPECT_EQ(os::ReadFileContent(folder.Path16("f"), 5), content);
    EXPECT_EQ(os::ReadFileContent(folder.Path16("link"), 5), content);
    EXPECT_EQ(os::ReadFileContent(folder.Path16("f"), 4), std::nullopt);
    EXPECT_EQ(os::ReadFileContent(folder.Path16("empty"), 0), "");
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    for (char const* const name : {"pipe", "missing", ""})
        EXPECT_EQ(os::ReadFileContent(folder.Path16(name), 5), std::nullopt) << name;
    EXPECT_EQ(os::GetFileKind(folder.Path16("pipe")), os::FileKind::kOther);
    std::string reason;
    EXPECT_EQ(os::OpenModule(folder.Path16("pipe"), reason), nullptr);
    EXPECT_FALSE(vyncore::utility::FileUtils::SimpleWriteStringToFile(folder.Path16("pipe"), "text"));
    EXPECT_EQ(os::ReadFileContent(u"/dev/zero", 5), std::nullopt);
    // Such a file says that it is empty.
    EXPECT_FALSE(os::ReadFileContent(u"/proc/self/maps", 1 << 20).value_or("").empty());
    EXPECT_EQ(os::ReadFileContent(u"/proc/self/maps", 100), std::nullopt);
}

} // namespace
