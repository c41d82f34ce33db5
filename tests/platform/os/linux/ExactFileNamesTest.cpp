#include "os/FileNames.h"

#include <gtest/gtest.h>

namespace {

TEST(ExactFileNamesTest, LetterCaseAndBackslashesTellFilesApart) {
    EXPECT_NE(os::CompareFileNames(u"/a/b.so", u"/a/B.so"), 0);
    EXPECT_NE(os::CompareFileNames(u"/a/b.so", u"/a\\b.so"), 0);
}

} // namespace
