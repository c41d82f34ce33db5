#include "vyncore/utility/FileUtils.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using vyntest::TemporaryFolder;

namespace FileUtils = vyncore::utility::FileUtils;

TEST(FileUtilsTest, AFileIsFoundWithItsBackslashesReadAsSlashes) {
    TemporaryFolder const folder;
    folder.AddFolder("x.vst3/inner");
    folder.AddFile("x.vst3/inner/x.so");
    std::u16string path = folder.Path16("x.vst3/inner/x.so");
    EXPECT_TRUE(FileUtils::FileExists(path));
    std::replace(path.begin(), path.end(), u'/', u'\\');
    EXPECT_TRUE(FileUtils::FileExists(path));
    EXPECT_FALSE(FileUtils::FileExists(path + u'x'));
    EXPECT_FALSE(FileUtils::FileExists(folder.Path16("x.vst3")));
    EXPECT_FALSE(FileUtils::FileExists(u""));
}

TEST(FileUtilsTest, WritingReplacesTheContent) {
    TemporaryFolder const folder;
    std::string const text = std::string("a\r\nb\n\0c", 7);
    EXPECT_TRUE(FileUtils::SimpleWriteStringToFile(folder.Path16("f"), "something longer"));
    EXPECT_TRUE(FileUtils::SimpleWriteStringToFile(folder.Path16("f"), text));
    EXPECT_EQ(vyntest::ReadText(folder.Path() / "f"), text);
    EXPECT_FALSE(FileUtils::SimpleWriteStringToFile(folder.Path16("missing/f"), text));
    EXPECT_FALSE(FileUtils::SimpleWriteStringToFile(folder.Path16(), text));
    EXPECT_FALSE(FileUtils::SimpleWriteStringToFile(folder.Path16("g") + u'\0' + u"h", text));
    EXPECT_FALSE(FileUtils::FileExists(folder.Path16("g")));
}

} // namespace
