#include "os/FileContent.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using vyntest::TemporaryFolder;

TEST(FileContentTest, OnlyOrdinaryFilesWithinTheBoundAreRead) {
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
    EXPECT_EQ(os::ReadFileContent(u"/dev/zero", 5), std::nullopt);
    // Such a file says that it is empty.
    EXPECT_FALSE(os::ReadFileContent(u"/proc/self/maps", 1 << 20).value_or("").empty());
    EXPECT_EQ(os::ReadFileContent(u"/proc/self/maps", 100), std::nullopt);
}

} // namespace
