#include "vyncore/serialization/JSON.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

using namespace vyncore::serialization;
using vyncore::UString;
using vyncore::UTF8String;

std::string Repeat(std::string const& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(JSONTest, WellFormedTextIsWrittenBackWithItsTypesAndItsOrder) {
    struct {
        char const* text;
        std::type_info const& type;
        char const* written;
    } const cases[] = {
        {R"( {"b" : [1, -1, 1.0], "a" : null, "b" : {}} )", typeid(JSONObject), R"({"b":{},"a":null})"},
        {"[[], {}, true, false]", typeid(JSONArray), "[[],{},true,false]"},
        {"18446744073709551615", typeid(std::uint64_t), "18446744073709551615"},
        {"-9223372036854775808", typeid(std::int64_t), "-9223372036854775808"},
        {"18446744073709551616", typeid(double), "1.8446744073709552e+19"},
        {"-0.0", typeid(double), "-0.0"},
        {"0.1", typeid(double), "0.1"},
        {R"("\u00e4\ud834\udd1e\u0000\"\n")", typeid(UTF8String), "\"\xC3\xA4\xF0\x9D\x84\x9E\\u0000\\\"\\n\""},
        {"null", typeid(void), "null"},
    };
    for (auto const& tried : cases) {
        boost::any const value = JSONParse(tried.text);
        EXPECT_EQ(value.type(), tried.type) << tried.text;
        EXPECT_EQ(GetJSONUTF8String(value), tried.written);
    }
}

TEST(JSONTest, BadTextGivesNothing) {
    UTF8String const cases[] = {
        "",     "{",    "[1,]",   "{\"a\":1,}", "1 2",         "[1]x",     "nan",      "'a'",       "{1:2}", "1e999",
        "[01]", "// c", "\"\n\"", "\"\xFF\"",   "\"\\ud800\"", "\xC3\xA4", {"1\0", 2}, {"1\0x", 3}, "[1}",   "\"a",
    };
    for (UTF8String const& text : cases)
        EXPECT_TRUE(JSONParse(text).empty()) << text;
}

TEST(JSONTest, NestingIsBoundedReadAndBuilt) {
    std::string const deepest = Repeat("[", kMostJSONLevels) + Repeat("]", kMostJSONLevels);
    boost::any deep = JSONParse(deepest);
    EXPECT_EQ(GetJSONUTF8String(deep), deepest);
    EXPECT_TRUE(JSONParse('[' + deepest + ']').empty());
    EXPECT_TRUE(JSONParse(Repeat("[", 1'000'000)).empty());
    EXPECT_TRUE(JSONParse(Repeat("{\"a\":", 1'000'000)).empty());
    boost::any outer;
    EXPECT_THROW(AppendToArray(outer, deep), std::length_error);
    EXPECT_THROW(AddToObject(outer, "a", deep), std::length_error);
    EXPECT_TRUE(outer.empty());
    EXPECT_NO_THROW(AppendToArray(deep, 1));
}

TEST(JSONTest, ObjectsAndArraysAreBuiltInPlace) {
    boost::any object;
    AddToObject(object, "b", 1);
    AddToObject(object, "a", 2u);
    AddToObject(object, "b", UString(u"\u00E4"));
    AddToObject(object, "self", object);
    EXPECT_EQ(GetJSONUTF8String(object), "{\"b\":\"\xC3\xA4\",\"a\":2,\"self\":{\"b\":\"\xC3\xA4\",\"a\":2}}");
    EXPECT_EQ(boost::any_cast<unsigned>(*GetVariantInObject(object, "a")), 2u);
    EXPECT_EQ(GetVariantInObject(object, "c"), nullptr);
    EXPECT_EQ(GetVariantInObject(boost::any(1), "a"), nullptr);
    EXPECT_EQ(GetVariantInObject(boost::any(), "a"), nullptr);
    EXPECT_THROW(AppendToArray(object, 1), boost::bad_any_cast);
    boost::any number = 1;
    EXPECT_THROW(AddToObject(number, "a", 1), boost::bad_any_cast);

    boost::any array;
    for (int i = 0; i < 100'000; ++i)
        AppendToArray(array, i);
    boost::any const read = JSONParse(GetJSONUTF8String(array));
    auto const& elements = boost::any_cast<JSONArray const&>(read);
    EXPECT_EQ(elements.size(), 100'000u);
    EXPECT_EQ(boost::any_cast<std::uint64_t>(elements[99'999]), 99'999u);
}

TEST(JSONTest, ManyMembersAreFoundAndKeptOnce) {
    UTF8String text = "{";
    for (int i = 0; i < 200'000; ++i)
        text += '"' + std::to_string(i % 100'000) + "\":" + std::to_string(i) + ',';
    text.back() = '}';
    boost::any const object = JSONParse(text);
    EXPECT_EQ(boost::any_cast<JSONObject const&>(object).size(), 100'000u);
    EXPECT_EQ(boost::any_cast<std::uint64_t>(*GetVariantInObject(object, "7")), 100'007u);
}

TEST(JSONTest, WhatJSONCanNotSayIsReplacedOrRefused) {
    boost::any array;
    for (double const value : {std::nan(""), std::numeric_limits<double>::infinity()})
        AppendToArray(array, value);
    AppendToArray(array, static_cast<char const*>(nullptr));
    AppendToArray(array, "plain");
    AppendToArray(array, UTF8String("a\xFF"));
    AppendToArray(array, 0.5f);
    EXPECT_EQ(GetJSONUTF8String(array), "[null,null,null,\"plain\",\"a\xEF\xBF\xBD\",0.5]");
    AppendToArray(array, std::make_pair(1, 2));
    EXPECT_THROW(GetJSONUTF8String(array), boost::bad_any_cast);
}

} // namespace
