#include "os/ReplacementFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

namespace fs = std::filesystem;
using vyntest::ReadText;
using vyntest::TemporaryFolder;

TEST(ReplacementFileTest, TargetChangesWholeOrNotAtAll) {
    TemporaryFolder const folder;
    fs::path const target = folder.Path() / "target";
    folder.AddFile("target", "old");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    folder.AddLink("link", "target");
    { os::ReplacementFile const dropped(target); }
    EXPECT_EQ(ReadText(target), "old");
    os::ReplacementFile(folder.Path() / "link").Commit();
    EXPECT_EQ(ReadText(target), "");
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(folder.CountFiles(), 2);
}

TEST(ReplacementFileTest, LinksThatLeadToNothingYetAreFollowed) {
    TemporaryFolder const folder;
    folder.AddFolder("real/sub");
    folder.AddLink("folder", "real/sub");
    folder.AddLink("real/second", folder.Path() / "real" / "target");
    folder.AddLink("real/sub/first", "../second");
    os::ReplacementFile(folder.Path() / "folder" / "first").Commit();
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder.Path() / "real" / "target")));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "real" / "second"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "real" / "sub" / "first"));
}

TEST(ReplacementFileTest, SeveralForOneTargetKeepApartAndEachNameIsToldBeforeItsFileIsMade) {
    TemporaryFolder const folder;
    std::vector<std::string> told;
    auto const observer = [&](std::string const& name) {
        EXPECT_FALSE(fs::exists(name));
        told.push_back(name);
    };
    {
        os::ReplacementFile first(folder.Path() / "target", observer);
        os::ReplacementFile second(folder.Path() / "target", observer);
        EXPECT_TRUE(first.Write("fir") && first.Write("st"));
        std::ofstream(fs::path(second.GetTemporaryPath())) << "second";
        second.Commit();
        EXPECT_EQ(ReadText(folder.Path() / "target"), "second");
        first.Commit();
    }
    EXPECT_EQ(told.size(), 2u);
    EXPECT_EQ(ReadText(folder.Path() / "target"), "first");
    EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(ReplacementFileTest, WhatCanNotBeAFileIsRefused) {
    TemporaryFolder const folder;
    folder.AddLink("loop", "circle");
    folder.AddLink("circle", "loop");
    folder.AddLink("homeless", "missing/f");
    for (std::u16string const& path :
         {folder.Path16(), folder.Path16("missing/f"), folder.Path16("f") + u'/', folder.Path16("f") + u'\0' + u"g",
          std::u16string(), folder.Path16("loop"), folder.Path16("homeless")})
        EXPECT_THROW(os::ReplacementFile file(path), std::runtime_error);
    EXPECT_EQ(folder.CountFiles(), 3);
}

} // namespace
