#include "vynaudiofilterhost/VST3/src/VST3ClassID.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

using namespace vynaudiofilterhost::vst3;

namespace {

struct ClassID {
    Steinberg::TUID bytes;
};

std::string AsText(Steinberg::TUID const& bytes) {
    return std::string(bytes, sizeof(Steinberg::TUID));
}

ClassID Parse(vyncore::UString const& text) {
    ClassID parsed;
    std::memset(parsed.bytes, 0x5A, sizeof parsed.bytes);
    ParseVST3ClassID(text, parsed.bytes);
    return parsed;
}

constexpr ClassID kShortWord = {{0x3d, 0x2c, 0x1b, 0x0a, 0, 0, 0x6f, 0x5e, 0x70, -128, -112, -96, -80, -64, -48, -32}};
constexpr ClassID kHighBytes = {{-1, -2, -3, -4, -5, -6, -7, -8, -9, -10, -11, -12, -13, -14, -15, -16}};

} // namespace

TEST(VST3ClassIDTest, TextIsFourWordsOfWhichTheFirstAloneIsPadded) {
    EXPECT_EQ(MakeFilterClassIDText(kShortWord.bytes), u"0a1b2c3d 5e6f 708090a0 b0c0d0e0");
    EXPECT_EQ(FormatVST3ClassID(kShortWord.bytes), u"3:0a1b2c3d 5e6f 708090a0 b0c0d0e0");
    EXPECT_EQ(FormatVST3ClassID(kHighBytes.bytes), u"3:fcfdfeff fafbf8f9 f7f6f5f4 f3f2f1f0");
    EXPECT_EQ(FormatVST3ClassID(ClassID{}.bytes), u"3:00000000 0 0 0");
}

TEST(VST3ClassIDTest, EitherFormReadsBackToTheSameBytes) {
    for (ClassID const& id : {kShortWord, kHighBytes, ClassID{}}) {
        EXPECT_EQ(AsText(Parse(FormatVST3ClassID(id.bytes)).bytes), AsText(id.bytes));
        EXPECT_EQ(AsText(Parse(MakeFilterClassIDText(id.bytes)).bytes), AsText(id.bytes));
    }
}

TEST(VST3ClassIDTest, WordsFromTheFirstUnreadableOneOnAreZero) {
    struct {
        vyncore::UString text;
        vyncore::UString canonical;
    } const kCases[] = {{u"", u"00000000 0 0 0"},           {u"3:", u"00000003 0 0 0"},
                        {u"3:1 2", u"00000001 2 0 0"},      {u"3:1 2 x 4", u"00000001 2 0 0"},
                        {u"hello", u"00000000 0 0 0"},      {u"3:1 123456789 3 4", u"00000001 0 0 0"},
                        {u"3: A b\tC d", u"0000000a b c d"}};
    for (auto const& testCase : kCases)
        EXPECT_EQ(MakeFilterClassIDText(Parse(testCase.text).bytes), testCase.canonical);
}
