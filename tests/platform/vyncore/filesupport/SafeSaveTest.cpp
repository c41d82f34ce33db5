#include "vyncore/filesupport/SafeSave.h"

#include "support/TemporaryFolder.h"
#include "vyncore/filesupport/FileDeleteException.h"
#include "vyncore/utility/FileUtils.h"

#include <gtest/gtest.h>

namespace {

using namespace vyncore::filesupport;
using vyncore::utility::FileUtils::SimpleWriteStringToFile;
using vyntest::TemporaryFolder;

TEST(SafeSaveTest, TheFileIsTheOldOneUntilCommitAndWithoutIt) {
    TemporaryFolder const folder;
    folder.AddFile("f", "old");
    for (bool const commits : {false, true}) {
        SafeSave save(File(folder.Path16("f")));
        EXPECT_EQ(std::filesystem::path(save.GetTempFile().FullPath()).parent_path(), folder.Path());
        EXPECT_TRUE(SimpleWriteStringToFile(save.GetTempFile().FullPath(), "newer"));
        EXPECT_EQ(vyntest::ReadText(folder.Path() / "f"), "old");
        if (commits)
            save.Commit();
    }
    EXPECT_EQ(vyntest::ReadText(folder.Path() / "f"), "newer");
    EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(SafeSaveTest, WhatStaysInTheWayIsThrown) {
    TemporaryFolder const folder;
    EXPECT_THROW(SafeSave{File(folder.Path16())}, file_delete_exception);
    SafeSave homeless(File(folder.Path16("missing/f")));
    EXPECT_EQ(homeless.GetTempFile().FullPath(), u"");
    EXPECT_THROW(homeless.Commit(), file_delete_exception);
    // A folder takes the place while the file is being written.
    SafeSave late(File(folder.Path16("f")));
    folder.AddFolder("f");
    EXPECT_THROW(late.Commit(), file_delete_exception);
}

} // namespace
