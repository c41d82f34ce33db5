#include "vyncore/proplist/PropListFile.h"

#include "support/TemporaryFolder.h"
#include "vyncore/filesupport/FileDeleteException.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using vyncore::filesupport::File;
using vyncore::filesupport::file_delete_exception;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;
using vyntest::TemporaryFolder;

TEST(PropListFileTest, WhatIsSavedIsLoadedInPlaceOfAllOrOverWhatIsThere) {
    TemporaryFolder const folder;
    folder.AddFile("f", "old");
    PropList saved;
    saved.SetValue("a", 1);
    saved.CreateList("sub").SetValue("b", 2);
    EXPECT_TRUE(SavePropList(File(folder.Path16("f")), saved));
    EXPECT_EQ(folder.CountFiles(), 1);

    PropList list;
    list.SetValue("a", 7);
    list.SetValue("kept", 7);
    list.CreateList("sub").SetValue("kept", 7);
    PropList merged = list;
    EXPECT_TRUE(LoadPropList(folder.Path16("f"), list, false));
    EXPECT_EQ(list, saved);
    EXPECT_TRUE(LoadPropList(folder.Path16("f"), merged, true));
    PropList expected = saved;
    expected.SetValue("kept", 7);
    expected.CreateList("sub").SetValue("kept", 7);
    EXPECT_EQ(merged, expected);
}

TEST(PropListFileTest, WhatCanNotBeLoadedLeavesTheListAndWhatCanNotBeSavedTheFile) {
    TemporaryFolder const folder;
    folder.AddFile("bad", "<proplist version='1'>");
    PropList list;
    list.SetValue("a", 1);
    PropList const before = list;
    for (char const* const name : {"bad", "missing", ""})
        EXPECT_FALSE(LoadPropList(folder.Path16(name), list, false)) << name;
    EXPECT_EQ(list, before);

    EXPECT_FALSE(SavePropList(File(folder.Path16("missing/f")), list));
    EXPECT_FALSE(SavePropList(File(), list));
    EXPECT_THROW(SavePropList(File(folder.Path16()), list), file_delete_exception);
    PropList* inner = &list;
    for (int level = 0; level < 300; ++level)
        inner = &inner->CreateList("l");
    EXPECT_THROW(SavePropList(File(folder.Path16("bad")), list), std::length_error);
    EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(PropListFileTest, LargeChunksAreSavedAndWhatCouldNotBeLoadedIsNot) {
    TemporaryFolder const folder;
    PropList list;
    list.SetValue("chunk", vyncore::UTF8String(10 << 20, 'x'));
    ASSERT_TRUE(SavePropList(File(folder.Path16("f")), list));
    PropList large;
    large.SetValue("chunk", vyncore::UTF8String(kMostFileBytes / 5, '&'));
    EXPECT_THROW(SavePropList(File(folder.Path16("f")), large), std::length_error);
    EXPECT_TRUE(LoadPropList(folder.Path16("f"), large, false));
    EXPECT_TRUE(large == list);
    EXPECT_EQ(folder.CountFiles(), 1);
}

} // namespace
