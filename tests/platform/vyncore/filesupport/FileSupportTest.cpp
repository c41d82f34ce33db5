#include "support/TemporaryFolder.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using vyntest::TemporaryFolder;

using vyncore::UString;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;

TEST(FileTest, NameAndTitleAreTheLastPart) {
    struct {
        UString path, name, title;
    } const cases[] = {
        {u"/a/Simple Mastering.so", u"Simple Mastering.so", u"Simple Mastering"},
        {u"x.vst3", u"x.vst3", u"x"},
        {u"/a.b/c", u"c", u"c"},
        {u"/a/b.c.so", u"b.c.so", u"b.c"},
        {u"/a/.hidden", u".hidden", u".hidden"},
        {u"/a/", u"", u""},
        {u"", u"", u""},
        {u"/\u00E4/\xD834\xDD1E.so", u"\xD834\xDD1E.so", u"\xD834\xDD1E"},
    };
    for (auto const& [path, name, title] : cases) {
        EXPECT_EQ(File(path).GetName(), name);
        EXPECT_EQ(File(path).GetTitle(), title);
        EXPECT_EQ(File(path).FullPath(), path);
    }
}

TEST(DirTest, WalksFilesAndFoldersApartAndNotBelow) {
    TemporaryFolder const folder;
    folder.AddFile("b.so");
    folder.AddFile("a.so");
    folder.AddFolder("bundle.vst3");
    folder.AddFile("bundle.vst3/inner.so");
    folder.AddLink("link.so", "a.so");
    folder.AddLink("linked", "bundle.vst3");
    Dir const dir(folder.Path16());

    std::vector<UString> files;
    for (auto file = dir.BeginFiles(); file != dir.EndFiles(); ++file)
        files.push_back(file->GetName());
    EXPECT_EQ(files, (std::vector<UString>{u"a.so", u"b.so", u"link.so"}));

    std::vector<UString> subdirs;
    for (auto subdir = dir.BeginSubdirs(); subdir != dir.EndSubdirs(); subdir++)
        subdirs.push_back(subdir->FullPath());
    EXPECT_EQ(subdirs, (std::vector<UString>{folder.Path16("bundle.vst3"), folder.Path16("linked")}));
}

TEST(DirTest, ExistsTellsFoldersFromFiles) {
    TemporaryFolder const folder;
    folder.AddFile("f");
    Dir const dir(folder.Path16());
    EXPECT_TRUE(dir.Exists());
    EXPECT_TRUE(File(dir, u"f").Exists());
    EXPECT_FALSE(File(dir.FullPath()).Exists());
    Dir const missing(Dir(folder.Path16() + u'/'), u"f");
    EXPECT_EQ(missing.FullPath(), folder.Path16("f"));
    EXPECT_FALSE(missing.Exists());
    EXPECT_EQ(missing.BeginFiles(), missing.EndFiles());
    EXPECT_FALSE(Dir().Exists());
    EXPECT_EQ(Dir(Dir(), u"etc").FullPath(), u"");
    EXPECT_EQ(File(Dir(), u"f").FullPath(), u"");
}

} // namespace
