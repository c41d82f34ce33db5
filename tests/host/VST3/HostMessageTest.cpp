#include "vynaudiofilterhost/VST3/src/HostMessage.h"

#include <bit>
#include <gtest/gtest.h>
#include <string>

using namespace vynaudiofilterhost::vst3;
using Steinberg::int64;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::uint32;

namespace {

std::u16string String(HostAttributeList& list, char const* id, uint32 sizeInBytes = 20) {
    std::u16string buffer(10, u'?');
    EXPECT_EQ(list.getString(id, buffer.data(), sizeInBytes), kResultOk);
    return buffer;
}

void const* Binary(HostAttributeList& list, char const* id, std::string const& expected) {
    void const* data = nullptr;
    uint32 size = 99;
    EXPECT_EQ(list.getBinary(id, data, size), kResultOk);
    EXPECT_EQ(std::string(static_cast<char const*>(data), size), expected);
    return data;
}

} // namespace

TEST(HostMessageTest, KeepsACopyOfItsIDAndOneListOfAttributes) {
    auto* const message = new HostMessage;
    EXPECT_STREQ(message->getMessageID(), "");
    std::string id = "first";
    message->setMessageID(id.c_str());
    id = "other";
    EXPECT_STREQ(message->getMessageID(), "first");
    message->setMessageID(nullptr);
    EXPECT_STREQ(message->getMessageID(), "");
    Steinberg::Vst::IAttributeList* const attributes = message->getAttributes();
    ASSERT_NE(attributes, nullptr);
    EXPECT_EQ(message->getAttributes(), attributes);
    attributes->addRef();
    message->release();
    EXPECT_EQ(attributes->setInt("a", 1), kResultOk) << "a list that is held outlives its message";
    EXPECT_EQ(attributes->release(), 0u);
}

TEST(HostAttributeListTest, NumbersShareTheirBits) {
    HostAttributeList list;
    int64 number = 5;
    double real = 5;
    EXPECT_EQ(list.getInt("a", number), kResultFalse);
    EXPECT_EQ(list.getFloat("a", real), kResultFalse);
    EXPECT_EQ(number, 5);
    list.setInt("a", -1);
    EXPECT_EQ(list.getInt("a", number), kResultOk);
    EXPECT_EQ(number, -1);
    list.setFloat("a", 2.0);
    EXPECT_EQ(list.getFloat("a", real), kResultOk);
    EXPECT_EQ(real, 2.0);
    EXPECT_EQ(list.getInt("a", number), kResultOk);
    EXPECT_EQ(number, std::bit_cast<int64>(2.0));
    list.setString("a", u"text");
    EXPECT_EQ(list.getInt("a", number), kResultOk);
    EXPECT_EQ(number, 0) << "a string has no number";
}

TEST(HostAttributeListTest, StringIsCutToTheBufferAndGetsNoTerminator) {
    HostAttributeList list;
    list.setString("s", u"hello");
    EXPECT_EQ(String(list, "s"), u"hello?????");
    EXPECT_EQ(String(list, "s", 4), u"he????????");
    EXPECT_EQ(String(list, "s", 5), u"he????????");
    EXPECT_EQ(String(list, "s", 0xFFFFFFFF), u"hello?????") << "an absurd size copies what there is";
    list.setString("s", u"");
    EXPECT_EQ(String(list, "s"), u"??????????");
    list.setInt("s", 1);
    EXPECT_EQ(String(list, "s"), u"??????????") << "an integer has no units";
}

TEST(HostAttributeListTest, BinaryOfTheSameSizeIsChangedInPlace) {
    HostAttributeList list;
    void const* data = &list;
    uint32 size = 99;
    EXPECT_EQ(list.getBinary("b", data, size), kResultFalse);
    EXPECT_EQ(size, 0u);
    list.setBinary("b", "abc", 3);
    void const* const first = Binary(list, "b", "abc");
    list.setBinary("b", "xyz", 3);
    EXPECT_EQ(Binary(list, "b", "xyz"), first);
    list.setBinary("b", "longer", 6);
    Binary(list, "b", "longer");
    list.setBinary("b", nullptr, 0);
    Binary(list, "b", "");
    list.setFloat("b", 1);
    Binary(list, "b", "");
}

TEST(HostAttributeListTest, NullsAndAbsurdSizesChangeNothing) {
    HostAttributeList list;
    list.setBinary("b", "abc", 3);
    int64 number = 0;
    void const* data = nullptr;
    uint32 size = 0;
    char16_t unit = u'?';
    auto const kInvalid = Steinberg::kInvalidArgument;
    EXPECT_EQ(list.setInt(nullptr, 1), kInvalid);
    EXPECT_EQ(list.getInt(nullptr, number), kInvalid);
    EXPECT_EQ(list.setString("b", nullptr), kInvalid);
    EXPECT_EQ(list.setString(nullptr, u"x"), kInvalid);
    EXPECT_EQ(list.getString(nullptr, &unit, 2), kInvalid);
    EXPECT_EQ(list.getString("missing", &unit, 2), kResultFalse);
    EXPECT_EQ(list.getString("missing", nullptr, 2), kResultFalse);
    EXPECT_EQ(list.getString("b", nullptr, 2), kResultOk) << "bytes have no units to copy";
    list.setString("s", u"hello");
    EXPECT_EQ(list.getString("s", nullptr, 2), kInvalid);
    EXPECT_EQ(list.getString("s", nullptr, 1), kResultOk) << "not one unit fits";
    EXPECT_EQ(list.getString("s", nullptr, 0), kResultOk);
    EXPECT_EQ(list.setBinary("b", nullptr, 7), kInvalid);
    EXPECT_EQ(list.setBinary("b", &unit, 0xFFFFFFFF), Steinberg::kOutOfMemory);
    EXPECT_EQ(list.getBinary(nullptr, data, size), kInvalid);
    Binary(list, "b", "abc");
}
