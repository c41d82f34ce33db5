#include "vyncore/proplist/PropListText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>

namespace {

using vyncore::UString;
using vyncore::UTF8String;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;

void ExpectReadsBack(PropList const& list) {
    UTF8String const text = WritePropList(list);
    PropList read;
    read.SetValue("before", 1);
    ASSERT_TRUE(ReadPropList(text, read)) << text.substr(0, 1000);
    EXPECT_EQ(read, list) << text.substr(0, 1000);
    EXPECT_EQ(WritePropList(read), text);
}

TEST(PropListTextTest, APersonCanReadIt) {
    PropList list;
    list.SetValue("C", -2);
    list.SetValue("count", 4294967295u);
    list.SetValue("gain", 0.1f);
    list.SetValue("on", true);
    list.SetValue("curve", std::list<float>{1.0f, -0.5f});
    list.SetValue("path", UString(u"C:\\a\u00E4 & <b>"));
    list.SetValue("raw", UTF8String("\xFF\\\n"));
    list.SetValue("half", UString(u" \xD800"));
    list.SetValue("empty", UString());
    list.CreateList("a\"b\t").CreateList("inner").SetValue("", 1);
    EXPECT_EQ(WritePropList(list), R"(<?xml version="1.0"?>
<proplist version="1">
  <int key="C">-2</int>
  <unsigned key="count">4294967295</unsigned>
  <floats key="curve">1 -0.5</floats>
  <text key="empty"></text>
  <float key="gain">0.1</float>
  <text key="half" escaped="true">\u0020\uD800</text>
  <bool key="on">true</bool>
  <text key="path">C:\aä &amp; &lt;b&gt;</text>
  <utf8 key="raw" escaped="true">\xFF\\\x0A</utf8>
  <list key="a&quot;b\x09" key-escaped="true">
    <list key="inner">
      <int key="">1</int>
    </list>
  </list>
</proplist>
)");
    ExpectReadsBack(list);
    ExpectReadsBack({});
}

TEST(PropListTextTest, EveryFloatReadsBackBitForBit) {
    std::mt19937 random(1);
    std::list<float> floats;
    for (std::uint32_t const bits : {0u, 0x80000000u, 1u, 0x80000001u, 0x007FFFFFu, 0x7F7FFFFFu, 0x7F800000u,
                                     0xFF800000u, 0x7F800001u, 0x7FC00000u, 0xFFC00000u, 0xFFFFFFFFu})
        floats.push_back(std::bit_cast<float>(bits));
    for (int i = 0; i < 100'000; ++i)
        floats.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
    PropList list;
    for (auto value = floats.begin(); list.GetValues().size() < 100; ++value)
        list.SetValue(std::to_string(list.GetValues().size()), *value);
    list.SetValue("all", floats);
    list.SetValue("none", std::list<float>());
    ExpectReadsBack(list);
}

TEST(PropListTextTest, EveryTextAndEveryKeyReadsBack) {
    PropList list;
    UString const texts[] = {u"",
                             u" ",
                             u"  ",
                             u"\n",
                             u"a\r\nb",
                             u" a ",
                             u"\\",
                             u"\\u0041",
                             u"]]>&amp;<!-- -->",
                             UString(1, u'\0'),
                             u"\xD834\xDD1E",
                             u"\xDD1E\xD834",
                             u"a\xD834",
                             u"\xFFFE\xFFFF\xFEFF\xFFFD",
                             u"\x7F\x85\x2028"};
    for (UString const& text : texts)
        list.SetValue(std::to_string(list.GetValues().size()), text);
    std::mt19937 random(2);
    for (int i = 0; i < 3000; ++i) {
        UTF8String bytes;
        UString units;
        for (std::size_t length = random() % 6; length > 0; --length) {
            bytes += static_cast<char>(random());
            units += static_cast<char16_t>(random() % 4 == 0 ? 0xD800 + random() % 0x800 : random());
        }
        list.SetValue(bytes, bytes);
        list.CreateList(bytes).SetValue("units", units);
    }
    ExpectReadsBack(list);
}

TEST(PropListTextTest, NestingIsBoundedReadAndWritten) {
    PropList list;
    PropList* inner = &list;
    for (std::size_t level = 1; level < kMostListLevels; ++level)
        inner = &inner->CreateList("l");
    ExpectReadsBack(list);
    inner->CreateList("l");
    EXPECT_THROW(WritePropList(list), std::length_error);

    UTF8String text = "<proplist version=\"1\">";
    for (int level = 0; level < 100'000; ++level)
        text.insert(text.size(), "<list key=\"\">");
    for (int level = 0; level < 100'000; ++level)
        text += "</list>";
    EXPECT_FALSE(ReadPropList(text + "</proplist>", list));
}

// Texts of what stands in <proplist version="1">, with what is understood.
TEST(PropListTextTest, WhatHandsWroteIsUnderstoodOrRefusedWhole) {
    struct {
        UTF8String content;
        char const* text;
    } const cases[] = {
        {"<text key='a'>b<!-- c -->d</text>", "bd"},
        {"<text key='a'> <!-- c -->b\n<![CDATA[c]]> </text> <!-- c --> <list key='b'> </list>", " b\nc "},
        {"\n<!-- c --> <text key='a'><![CDATA[<&amp;]]></text>", "<&amp;"},
        {"<text key=\"a\">&#x41;&#66;&apos;</text>", "AB'"},
        {"<text key='a'> \n</text>", " \n"},
        {"<text key='a' escaped='false'>\\</text>", "\\"},
        {"<text key='\\x61' key-escaped='true' escaped='true'>\\u0041</text>", "A"},
        {"<int key='i'> 7\n</int><text key='a'/>", ""},
    };
    auto const read = [](UTF8String const& content, PropList& list) {
        return ReadPropList("<proplist version='1'>" + content + "</proplist>", list);
    };
    for (auto const& [content, text] : cases) {
        PropList list;
        UTF8String value;
        EXPECT_TRUE(read(content, list) && list.GetValue("a", value)) << content;
        EXPECT_EQ(value, text) << content;
    }
    std::vector<UTF8String> refused{"<text key='\xEF\xBF\xBE'>a</text>", "<text>a</text>"};
    for (char const* const text :
         {"&foo;", "a & b", "&#0;", "&#xD800;", "&#x110000;", "\xFF", "\x01", "\xEF\xBF\xBF", "a<b/>"})
        refused.push_back(UTF8String("<text key='a'>") + text + "</text>");
    for (char const* const rest :
         {" escaped='true'>\\x41</text>", " escaped='true'>\\u12</text>", " escaped='maybe'>a</text>",
          " key='b'>a</text>", " other='b'>a</text>", "/><int key='a'>1</int>", "/><list key='b'/><list key='b'/>",
          "/><other key='b'/>", "/>rubbish", "/></list>"})
        refused.push_back(UTF8String("<text key='a'") + rest);
    for (UTF8String const& content : refused) {
        PropList list;
        EXPECT_FALSE(read(content, list)) << content;
        EXPECT_TRUE(list.IsEmpty()) << content;
    }
}

TEST(PropListTextTest, NumbersOutOfRangeAndRubbishAreRefused) {
    std::pair<char const*, std::vector<char const*>> const cases[] = {
        {"int", {"2147483648", "", "1x", "1 2", "+1", "1.0"}},
        {"unsigned", {"-1"}},
        {"bool", {"1", "TRUE"}},
        {"float", {"1e39", "infinity", "nan(1)", "0x1", "-nan", "1,5", "nan:1", "nan:7F800000", "--1"}},
        {"floats", {"1 2 x", "1,2"}},
    };
    for (auto const& [type, numbers] : cases) {
        for (char const* const number : numbers) {
            UTF8String const content = UTF8String(type) + " key='a'>" + number + "</" + type;
            PropList list;
            EXPECT_FALSE(ReadPropList("<proplist version='1'><" + content + "></proplist>", list)) << content;
        }
    }
}

TEST(PropListTextTest, OnlyOneWholeDocumentOfThisVersionIsRead) {
    UTF8String const good = "<proplist version='1'><int key='a'>1</int></proplist>";
    PropList list;
    EXPECT_TRUE(ReadPropList("\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- c -->" + good + "\n", list));
    for (UTF8String const& text :
         {UTF8String(), UTF8String(" "), good + good, good + "x", "x" + good, good + "<b/>", good + '\0',
          good.substr(0, good.size() - 1), UTF8String("<list version='1'/>"), UTF8String("<proplist/>"),
          UTF8String("<proplist version='2'/>"), UTF8String("<proplist version='1' key='a'/>"),
          "<!DOCTYPE proplist [<!ENTITY e 'x'>]>" + good})
        EXPECT_FALSE(ReadPropList(text, list)) << text;
    EXPECT_EQ(list.GetValueNames(), std::vector<UTF8String>{"a"});
}

} // namespace
