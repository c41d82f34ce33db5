#include "support/TemporaryFolder.h"
#include "vyncore/filesupport/SafeSave.h"
#include "vyncore/proplist/PropListFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using vyncore::UTF8String;
using vyncore::filesupport::File;
using vyncore::filesupport::SafeSave;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;
using vyntest::TemporaryFolder;

PropList MakeList(UTF8String const& text) {
    PropList list;
    list.SetValue("text", text);
    return list;
}

bool Loads(std::u16string const& path, PropList const& expected) {
    PropList list;
    return LoadPropList(path, list, false) && list == expected;
}

TEST(SavedFilesTest, FoldersWhoseNamesAreNoUnicodeAreReachedByALink) {
    TemporaryFolder const folder;
    fs::path const latin = folder.Path() / "caf\xE9";
    fs::create_directory(latin);
    folder.AddLink("link", latin);
    PropList const list = MakeList("new");
    EXPECT_TRUE(SavePropList(File(folder.Path16("link/f")), list));
    EXPECT_GT(fs::file_size(latin / "f"), 0u);
    EXPECT_TRUE(Loads(folder.Path16("link/f"), list));
    EXPECT_EQ(SafeSave(File(folder.Path16("link/f"))).GetTempFile().FullPath(), u"");
    EXPECT_EQ(folder.CountFiles(), 2);
}

TEST(SavedFilesTest, WhereNoMoreCanBeWrittenTheOldFileStays) {
    TemporaryFolder const folder;
    PropList const old = MakeList("old");
    ASSERT_TRUE(SavePropList(File(folder.Path16("f")), old));
    auto const formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    rlimit const small{100000, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    bool const saved = SavePropList(File(folder.Path16("f")), MakeList(UTF8String(200000, 'x')));
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_FALSE(saved);
    EXPECT_TRUE(Loads(folder.Path16("f"), old));
    EXPECT_EQ(folder.CountFiles(), 1);
}

// The number of a process comes again, in containers at once.
TEST(SavedFilesTest, WhatEndedProcessesLeftIsNotInTheWay) {
    TemporaryFolder const folder;
    for (int i = 0; i < 200; ++i)
        folder.AddFile(".vyn-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp");
    EXPECT_TRUE(SavePropList(File(folder.Path16("f")), MakeList("new")));
    EXPECT_EQ(folder.CountFiles(), 201);
}

TEST(SavedFilesTest, TheFormerOwnerAndRightsStay) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give a file to somebody else";
    TemporaryFolder const folder;
    folder.AddFile("f", "old");
    fs::path const file = folder.Path() / "f";
    ASSERT_EQ(chown(file.c_str(), 12345, 23456), 0);
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    ASSERT_TRUE(SavePropList(File(folder.Path16("f")), MakeList("new")));
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345u);
    EXPECT_EQ(status.st_gid, 23456u);
    EXPECT_EQ(status.st_mode & 07777u, 0640u);
}

} // namespace
