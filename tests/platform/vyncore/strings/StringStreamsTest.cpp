#include "vyncore/strings/StringStreams.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <locale>
#include <tuple>

namespace {

using vyncore::iUTF16StringStream;
using vyncore::oUTF16StringStream;
using vyncore::UString;

template <class T>
UString Written(T const& value, bool hex = false) {
    oUTF16StringStream stream;
    stream.SetHex(hex);
    stream << value;
    return stream.str();
}

TEST(StringStreamsTest, WritesAsAStandardStreamDoes) {
    EXPECT_EQ(Written(0.1f), u"0.1");
    EXPECT_EQ(Written(1234567.0f), u"1.23457e+06");
    EXPECT_EQ(Written(-0.0), u"-0");
    EXPECT_EQ(Written(true), u"1");
    EXPECT_EQ(Written(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
    EXPECT_EQ(Written(std::numeric_limits<std::uint64_t>::max()), u"18446744073709551615");
    EXPECT_EQ(Written(std::uint8_t{65}), u"65");
    EXPECT_EQ(Written(-1, true), u"ffffffff");
    EXPECT_EQ(Written(std::int8_t{-1}, true), u"ff");
    EXPECT_EQ(Written(0xEB0Fu, true), u"eb0f");
}

TEST(StringStreamsTest, BytesAreWidenedAndUtf8TextIsDecoded) {
    oUTF16StringStream stream;
    char const* const noBytes = nullptr;
    char16_t const* const noText = nullptr;
    stream << "\xC3\xA9" << ' ' << std::string("\xC3\xA9") << u'|' << u"w" << UString(u"x") << noBytes << noText;
    EXPECT_EQ(stream.str(), u"\u00C3\u00A9 \u00E9|wx");
}

TEST(StringStreamsTest, ReadsWordsAndNumbersInTurn) {
    iUTF16StringStream stream(u"  -2:name 1.5e1 18446744073709551615\n");
    int technology = 0;
    UString word;
    double real = 0;
    std::uint64_t wide = 0;
    EXPECT_TRUE(stream >> technology >> word >> real >> wide);
    EXPECT_EQ(std::tuple(technology, word, real, wide), std::tuple(-2, UString(u":name"), 15.0, ~std::uint64_t{0}));
    stream >> word;
    EXPECT_FALSE(stream);
    EXPECT_EQ(word, u"");
}

TEST(StringStreamsTest, AfterAFailureEveryReadGivesZero) {
    iUTF16StringStream stream(u"eb0fed8b 0X1F xyz 12");
    stream.SetHex(true);
    unsigned words[4] = {7, 7, 7, 7};
    stream >> words[0] >> words[1] >> words[2] >> words[3];
    EXPECT_FALSE(stream);
    EXPECT_EQ(std::to_array(words), (std::array{0xEB0FED8Bu, 0x1Fu, 0u, 0u}));
    for (UString const text : {u"inf", u"nan", u"1e999"}) {
        double value = 7;
        EXPECT_FALSE(iUTF16StringStream(text) >> value);
        EXPECT_EQ(value, 0);
    }
    for (UString const text : {u"2147483648", u"", u"   ", u"0x"}) {
        int value = 7;
        iUTF16StringStream one(text);
        one.SetHex(text.ends_with(u'x'));
        one >> value;
        EXPECT_FALSE(one);
        EXPECT_EQ(value, 0);
    }
}

struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(StringStreamsTest, TheUsersLocaleChangesNoNumber) {
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    vyncore::oUTF8StringStream stream;
    stream << 12345.5;
    EXPECT_EQ(stream.str(), "12345.5");
    EXPECT_EQ(Written(1234.5), u"1234.5");
    std::locale::global(before);
}

} // namespace
