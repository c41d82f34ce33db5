#include "vyncore/strings/StringUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace vyncore::string;
using vyncore::UString;

TEST(StringUtilsTest, EveryCharacterSurvivesBothWays) {
    std::string const utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\xEF\xBF\xBF" + std::string(1, '\0') + "z";
    UString const utf16 = UString(u"a\u00E9\u20AC\xD834\xDD1E\xFFFF") + u'\0' + u"z";
    EXPECT_EQ(UTF8to16(utf8), utf16);
    EXPECT_EQ(UTF16to8(utf16), utf8);
}

TEST(StringUtilsTest, MalformedTextBecomesReplacementCharacters) {
    struct {
        std::string_view utf8;
        UString expected;
    } const bytes[] = {
        {"a\xFFz", u"a\xFFFDz"},         // no lead byte
        {"a\xE2\x82", u"a\xFFFD"},       // ends too early
        {"a\xE2\x82z", u"a\xFFFDz"},     // broken off
        {"\xC0\xAF", u"\xFFFD"},         // overlong
        {"\xED\xA0\x80z", u"\xFFFDz"},   // a surrogate
        {"\xF4\x90\x80\x80", u"\xFFFD"}, // beyond the last character
        {"\x80\x80", u"\xFFFD\xFFFD"},   // trail bytes alone
    };
    for (auto const& [utf8, expected] : bytes)
        EXPECT_EQ(UTF8to16(utf8), expected);

    for (UString const& broken : {UString(u"\xD834"), UString(u"\xDD1E"), UString(u"\xD834\x0041").substr(0, 1)})
        EXPECT_EQ(UTF16to8(broken), "\xEF\xBF\xBD");
    EXPECT_EQ(UTF16to8(u"\xD834\xD834\xDD1E"), "\xEF\xBF\xBD\xF0\x9D\x84\x9E");
    EXPECT_EQ(AsciiToUTF16("a\xE9"), u"a\xFFFD");
}

TEST(StringUtilsTest, UpperCaseKnowsLettersBeyondAscii) {
    EXPECT_EQ(UpperCase(u"vst 3.6\u00E9\u00DF\u0434\xD834\xDD1E"), u"VST 3.6\u00C9\u00DF\u0414\xD834\xDD1E");
}

TEST(StringUtilsTest, ReadsTheNumberAtTheHead) {
    int value = 7;
    EXPECT_TRUE(StringToNumber(u" \t-12.5x", value));
    EXPECT_EQ(value, -12);
    EXPECT_TRUE(StringToNumber(u"+2147483647", value));
    EXPECT_EQ(value, 2147483647);
    for (UString const text : {u"", u"x1", u"-", u"+-1", u"- 1", u"2147483648", u"\u0661", u"99999999999999999999"}) {
        value = 7;
        EXPECT_FALSE(StringToNumber(text, value));
        EXPECT_EQ(value, 0);
    }
    unsigned word = 7;
    EXPECT_FALSE(StringToNumber(u"-1", word));
    EXPECT_EQ(word, 0u);
    std::uint64_t wide = 0;
    EXPECT_TRUE(StringToNumber(u"18446744073709551615", wide));
    EXPECT_EQ(wide, std::numeric_limits<std::uint64_t>::max());
    double real = 0;
    EXPECT_TRUE(StringToNumber(u"-1.5e-3dB", real));
    EXPECT_EQ(real, -1.5e-3);
    EXPECT_TRUE(StringToNumber(u"+.5", real));
    EXPECT_EQ(real, 0.5);
    for (UString const text : {u"1e999", u"-1e999", u"inf", u"-inf", u"+infinity", u"nan", u"-nan(1)", u"-", u"."}) {
        real = 7;
        EXPECT_FALSE(StringToNumber(text, real)) << UTF16to8(text);
        EXPECT_EQ(real, 0);
    }
    for (UString const text : {u"1e-999", u"-1e-999", u"0e999"}) {
        real = 7;
        EXPECT_TRUE(StringToNumber(text, real)) << UTF16to8(text);
        EXPECT_EQ(real, 0);
    }
}

TEST(StringUtilsTest, WritesNumbersInFixedNotation) {
    EXPECT_EQ(NumberToString(0.25, 1, 3), u"0.250");
    EXPECT_EQ(NumberToString(-0.25, 3, 1), u"-000.2");
    EXPECT_EQ(NumberToString(20, 4, 0), u"0020");
    EXPECT_EQ(NumberToString(12345.678, 2, 2), u"12345.68");
    EXPECT_EQ(NumberToString(999.96, 1, 1), u"1000.0");
    EXPECT_EQ(NumberToString(-0.001, 1, 2), u"0.00");
    EXPECT_EQ(NumberToString(1e30, 1, 0).size(), 31u);
    EXPECT_EQ(NumberToString(1.5e40, 1, 2), u"1.50e+40");
    EXPECT_EQ(NumberToString(1e300, 1, ~0u, 0, ~0u).size(), 301u + 1u + 99u);
    EXPECT_EQ(NumberToString(1, ~0u, 0).size(), 99u);
    EXPECT_EQ(NumberToString(std::nan(""), 3, 2), u"nan");
    EXPECT_EQ(NumberToString(-std::numeric_limits<double>::infinity(), 3, 2), u"-inf");
}

} // namespace
