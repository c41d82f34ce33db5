#include "vyncore/utility/BinaryText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace {

using namespace vyncore::utility;
using Bytes = std::vector<unsigned char>;

TEST(BinaryTextTest, TheTextIsBase64WithPadding) {
    std::string text;
    for (auto const& [bytes, expected] : std::initializer_list<std::pair<std::string_view, char const*>>{
             {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foobar", "Zm9vYmFy"}, {"\xFB\xFF\xFE", "+//+"}}) {
        Bytes const data(bytes.begin(), bytes.end());
        EXPECT_TRUE(EncodeBinaryDataToUTF8String(data.data(), data.size(), text));
        EXPECT_EQ(text, expected);
    }
    EXPECT_TRUE(EncodeBinaryDataToUTF8String(nullptr, 0, text));
    for (std::uint64_t const size : {text.max_size() / 4 * 3 + 1, std::numeric_limits<std::size_t>::max()})
        EXPECT_FALSE(EncodeBinaryDataToUTF8String(reinterpret_cast<unsigned char const*>("x"), size, text));
    text = "old";
    EXPECT_FALSE(EncodeBinaryDataToUTF8String(nullptr, 1, text));
    EXPECT_EQ(text, "");
}

TEST(BinaryTextTest, BytesOfAnyLengthComeBackAlsoFromAWrappedText) {
    for (std::size_t const size : {1u, 2u, 256u, 3071u, 3072u, 3073u, 3074u, 3075u, 3076u, 6144u, 6148u, 10000u}) {
        Bytes bytes(size);
        for (std::size_t index = 0; index < size; ++index)
            bytes[index] = static_cast<unsigned char>(index * index * 167 >> 4);
        std::string text;
        ASSERT_TRUE(EncodeBinaryDataToUTF8String(bytes.data(), size, text));
        EXPECT_EQ(text.size(), (size + 2) / 3 * 4);
        std::string wrapped = "\t ";
        for (std::size_t at = 0; at < text.size(); at += 75)
            wrapped += text.substr(at, 75) + "\r\n";
        for (auto const& form : {text, wrapped, text.substr(0, text.size() - 1) + " " + text.back()}) {
            Bytes decoded{1, 2};
            EXPECT_TRUE(DecodeBinaryDataFromUTF8String(form, decoded)) << size;
            EXPECT_EQ(decoded, bytes) << size;
        }
    }
}

TEST(BinaryTextTest, WhatTheEncoderWouldNotWriteIsRefusedWhole) {
    std::string const blocks(10000, 'A');
    for (auto const& text : {std::string("Z"), std::string("Zg="), std::string("Zh=="), std::string("Zm9="),
                             std::string("Z==="), std::string("Zg=A"), std::string("Zg==Zg=="), std::string("Zm9\0", 4),
                             std::string("Zm\xC3\xA4"), std::string("-_-_"), std::string("Zm9v=== ="), blocks + "A",
                             blocks + "AA!A", "A,AA" + blocks, blocks + "AA==" + blocks}) {
        Bytes data{1, 2};
        EXPECT_FALSE(DecodeBinaryDataFromUTF8String(text, data)) << text.substr(0, 20);
        EXPECT_TRUE(data.empty());
    }
}

} // namespace
