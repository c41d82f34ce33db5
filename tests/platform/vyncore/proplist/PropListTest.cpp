#include "vyncore/proplist/PropList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace {

using vyncore::UString;
using vyncore::UTF8String;
using vyncore::proplist::PropList;

template <class T>
void ExpectRefused(PropList const& list, std::string_view key, T before) {
    T value = before;
    EXPECT_FALSE(list.GetValue(key, value)) << key;
    EXPECT_EQ(value, before) << key;
}

TEST(PropListTest, ReadsBackEveryTypeAndOverwritesAnother) {
    PropList list;
    list.SetValue("key", UTF8String("text"));
    list.SetValue("key", std::list<float>{1.5f, -2.0f});
    std::list<float> floats;
    EXPECT_TRUE(list.GetValue("key", floats));
    EXPECT_EQ(floats, (std::list<float>{1.5f, -2.0f}));
    list.SetValue("key", UString(u"\u00E4"));
    UString wide;
    UTF8String narrow;
    EXPECT_TRUE(list.GetValue("key", wide) && list.GetValue("key", narrow));
    EXPECT_EQ(wide, u"\u00E4");
    EXPECT_EQ(narrow, "\xC3\xA4");
    EXPECT_EQ(list.GetValueNames().size(), 1u);
}

TEST(PropListTest, NumbersTurnIntoEachOtherOnlyWhenNothingIsLost) {
    PropList list;
    list.SetValue("minus", -1);
    list.SetValue("big", 4294967295u);
    list.SetValue("odd", 16777217);
    list.SetValue("half", 0.5f);
    list.SetValue("nan", std::nanf(""));
    list.SetValue("one", true);
    list.SetValue("text", UTF8String("1"));
    ExpectRefused(list, "minus", 7u);
    ExpectRefused(list, "minus", true);
    ExpectRefused(list, "big", 7);
    ExpectRefused(list, "odd", 7.0f);
    ExpectRefused(list, "half", 7);
    ExpectRefused(list, "nan", 7);
    ExpectRefused(list, "text", 7);
    ExpectRefused(list, "one", UString(u"before"));
    ExpectRefused(list, "half", std::list<float>{7.0f});
    ExpectRefused(list, "missing", 7.0f);
    int one = 0;
    float minus = 0;
    EXPECT_TRUE(list.GetValue("one", one) && list.GetValue("minus", minus));
    EXPECT_EQ(one, 1);
    EXPECT_EQ(minus, -1.0f);
}

TEST(PropListTest, SubListsStayInPlaceAndKeepNamesOfTheirOwn) {
    PropList list;
    EXPECT_EQ(list.FindList("b"), nullptr);
    PropList& first = list.CreateList("b");
    first.SetValue("inner", 1);
    for (char key = 'a'; key <= 'z'; ++key)
        list.CreateList(UTF8String(1, key));
    list.SetValue("b", 2);
    EXPECT_EQ(list.FindList("b"), &first);
    EXPECT_EQ(&list.CreateList("b"), &first);
    EXPECT_EQ(list.GetListNames().front(), "a");
    EXPECT_EQ(list.GetListNames().size(), 26u);

    EXPECT_TRUE(list.RemoveValue("b"));
    EXPECT_EQ(std::as_const(list).FindList("b"), nullptr);
    ExpectRefused(list, "b", 7);
    EXPECT_FALSE(list.RemoveValue("b"));
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    list.CreateList("a");
    EXPECT_FALSE(list.IsEmpty());
}

TEST(PropListTest, CopiesAreDeepAndAListMayTakeItsOwnSubList) {
    PropList list;
    list.CreateList("sub").CreateList("deep").SetValue("x", 1);
    PropList copy = list;
    EXPECT_EQ(copy, list);
    copy.FindList("sub")->FindList("deep")->SetValue("x", 2);
    EXPECT_FALSE(copy == list);
    list = *list.FindList("sub");
    EXPECT_EQ(list.GetListNames(), std::vector<UTF8String>{"deep"});
    list = std::move(*list.FindList("deep"));
    EXPECT_EQ(list.GetValueNames(), std::vector<UTF8String>{"x"});
}

TEST(PropListTest, TreesMayBeDeeperThanCallsCanGo) {
    PropList list;
    PropList* inner = &list;
    for (int level = 0; level < 200'000; ++level)
        inner = &inner->CreateList("l");
    inner->CreateList("a");
    inner->CreateList("l").SetValue("x", 1);
    PropList copy = list;
    EXPECT_TRUE(copy == list);
    inner->FindList("l")->SetValue("x", 2);
    EXPECT_FALSE(copy == list);
    copy.Clear();
    EXPECT_TRUE(copy.IsEmpty());
}

TEST(PropListTest, EqualityIsThatOfWhatIsStored) {
    PropList one;
    PropList other;
    one.SetValue("b", std::list<float>{std::nanf("")});
    one.SetValue("a", 0.0f);
    other.SetValue("a", 0.0f);
    other.SetValue("b", std::list<float>{std::nanf("")});
    EXPECT_EQ(one, other);
    other.SetValue("a", -0.0f);
    EXPECT_FALSE(one == other);
    other.SetValue("a", 0);
    EXPECT_FALSE(one == other);
}

} // namespace
