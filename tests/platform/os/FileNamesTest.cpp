#include "os/FileNames.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using vyncore::UString;

TEST(FileNamesTest, FormsOfOnePathAreEqual) {
    std::pair<UString, UString> const pairs[] = {
        {u"", u""},
        {u"/a/b.so", u"/a//b.so"},
        {u"/a/b.so", u"/a/./b.so"},
        {u"/a/b.so", u"/a/c/../b.so"},
        {u"/a/b", u"/a/b/"},
        {u"a", u"./a"},
        {u"/a", u"/../a"},
        {u"//a///b//", u"/a/b"},
        {u"../a", u"x/../../a"},
    };
    for (auto const& [left, right] : pairs) {
        EXPECT_EQ(os::CompareFileNames(left, right), 0);
        EXPECT_EQ(os::CompareFileNames(right, left), 0);
        EXPECT_EQ(os::FileNameKey(left), os::FileNameKey(right));
    }
}

TEST(FileNamesTest, OrdersAllTextsStrictly) {
    std::vector<UString> const texts = {u"",  u"/",    u"/a", u"/a/b",  u"/a.so",
                                        u"a", u"../a", u"/ä", u"/a\\b", u"/\xD800"};
    for (UString const& one : texts) {
        for (UString const& other : texts) {
            int const order = os::CompareFileNames(one, other);
            EXPECT_EQ(order == 0, one == other);
            EXPECT_EQ(order == 0, os::FileNameKey(one) == os::FileNameKey(other));
            EXPECT_EQ(order < 0, os::FileNameKey(one) < os::FileNameKey(other));
            EXPECT_EQ(os::CompareFileNames(other, one), -order);
            for (UString const& third : texts) {
                bool const ascends = order < 0 && os::CompareFileNames(other, third) < 0;
                EXPECT_TRUE(!ascends || os::CompareFileNames(one, third) < 0);
            }
        }
    }
}

} // namespace
