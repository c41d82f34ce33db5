#include "os/FileSystem.h"

#include "support/TemporaryFolder.h"
#include "vyncore/strings/StringUtils.h"

#include <gtest/gtest.h>

namespace {

using vyntest::TemporaryFolder;

TEST(FileSystemTest, ListsAFolderByNameFollowsLinksAndLeavesOutWhatIsNoText) {
    TemporaryFolder const folder;
    folder.AddFile("b");
    folder.AddFolder("a/below");
    folder.AddLink("c", folder.Path() / "a");
    folder.AddLink("nowhere", folder.Path() / "missing");
    folder.AddLink("up", folder.Path());
    folder.AddFile("\xFF.so");
    folder.AddFile("\xC3\xA4.so");

    auto const entries = os::ListDirectory(folder.Path16());
    std::string told;
    for (auto const& entry : entries)
        told += vyncore::string::UTF16to8(entry.name) + (entry.kind == os::FileKind::kDirectory ? "/ " : " ");
    ASSERT_EQ(told, "a/ b c/ up/ \xC3\xA4.so ");
    EXPECT_EQ(entries[2].identity, entries[0].identity);
    EXPECT_NE(entries[1].identity, entries[0].identity);
    EXPECT_EQ(entries[3].identity, os::GetFileIdentity(folder.Path16()));
    EXPECT_EQ(os::GetFileKind(os::JoinPath(folder.Path16(), entries[4].name)), os::FileKind::kFile);
}

TEST(FileSystemTest, APathThatNamesNothingIsAbsent) {
    TemporaryFolder const folder;
    folder.AddFile("file");
    std::u16string const paths[] = {u"", folder.Path16("missing"), folder.Path16("file") + u'\0' + u"cut",
                                    folder.Path16("file") + u"/below", std::u16string(100000, u'x')};
    for (std::u16string const& path : paths) {
        EXPECT_EQ(os::GetFileKind(path), os::FileKind::kNone);
        EXPECT_EQ(os::GetFileIdentity(path), std::nullopt);
        EXPECT_TRUE(os::ListDirectory(path).empty());
    }
    EXPECT_TRUE(os::ListDirectory(folder.Path16("file")).empty());
}

TEST(FileSystemTest, AStampTellsAFileFromOneThatTakesItsPlace) {
    vyntest::TemporaryFolder const folder;
    folder.AddFile("file", "1234");
    vyncore::UString const path = folder.Path16("file");
    auto const time = std::filesystem::last_write_time(folder.Path() / "file");
    auto const first = os::GetFileStamp(path);
    ASSERT_TRUE(first);
    EXPECT_EQ(os::GetFileStamp(path), first);
    folder.AddFile("other", "5678");
    std::filesystem::rename(folder.Path() / "other", folder.Path() / "file");
    std::filesystem::last_write_time(folder.Path() / "file", time);
    auto const second = os::GetFileStamp(path);
    EXPECT_EQ(second->size, first->size);
    EXPECT_EQ(second->changed, first->changed);
    EXPECT_NE(second, first);
    EXPECT_EQ(os::GetFileStamp(folder.Path16("none")), std::nullopt);
}

} // namespace
