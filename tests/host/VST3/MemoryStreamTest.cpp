#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"

#include <gtest/gtest.h>
#include <string>

using namespace vynaudiofilterhost::vst3;
using Steinberg::IBStream;
using Steinberg::int32;
using Steinberg::int64;

namespace {

int32 Write(VST3MemoryStream& stream, std::string text) {
    int32 written = -1;
    EXPECT_EQ(stream.write(text.data(), static_cast<int32>(text.size()), &written), Steinberg::kResultOk);
    return written;
}

std::string Read(VST3MemoryStream& stream, int32 count) {
    std::string buffer(64, '?');
    int32 got = -1;
    EXPECT_EQ(stream.read(buffer.data(), count, &got), Steinberg::kResultOk);
    return buffer.substr(0, static_cast<std::size_t>(got));
}

int64 Seek(VST3MemoryStream& stream, int64 pos, int32 mode = IBStream::kIBSeekSet) {
    int64 cursor = -1;
    EXPECT_EQ(stream.seek(pos, mode, &cursor), Steinberg::kResultOk);
    int64 told = -2;
    EXPECT_EQ(stream.tell(&told), Steinberg::kResultOk);
    EXPECT_EQ(told, cursor);
    return cursor;
}

std::string Bytes(VST3MemoryStream const& stream) {
    return std::string(stream.GetData(), stream.GetData() + stream.GetSize());
}

} // namespace

TEST(VST3MemoryStreamTest, ReadsFromTheCursorUpToTheEnd) {
    VST3MemoryStream stream;
    EXPECT_EQ(Write(stream, "abcd"), 4);
    EXPECT_EQ(Read(stream, 4), "");
    EXPECT_EQ(Seek(stream, 1), 1);
    EXPECT_EQ(Read(stream, 2), "bc");
    EXPECT_EQ(Read(stream, 60), "d");
    EXPECT_EQ(Seek(stream, 10), 10);
    EXPECT_EQ(Read(stream, 1), "");
    EXPECT_EQ(Seek(stream, 0, IBStream::kIBSeekCur), 4) << "a read past the end leaves the cursor at the end";
    EXPECT_EQ(Seek(stream, -3, IBStream::kIBSeekEnd), 1);
    EXPECT_EQ(Seek(stream, 2, IBStream::kIBSeekCur), 3);
    EXPECT_EQ(Seek(stream, 0, 77), 3) << "an unknown mode leaves the cursor";
}

TEST(VST3MemoryStreamTest, WriteEndsTheStreamBehindItselfAndFillsAGapWithZeros) {
    VST3MemoryStream stream;
    Write(stream, "0123456789");
    Seek(stream, 1);
    EXPECT_EQ(Write(stream, "ab"), 2);
    EXPECT_EQ(Bytes(stream), "0ab");
    Seek(stream, 6);
    Write(stream, "x");
    EXPECT_EQ(Bytes(stream), std::string("0ab\0\0\0x", 7));
    Seek(stream, 0);
    EXPECT_EQ(Write(stream, ""), 0);
    EXPECT_EQ(stream.GetSize(), 7u) << "an empty write doesn't cut";
    EXPECT_TRUE(stream.SetSize(2));
    EXPECT_TRUE(stream.SetSize(3));
    EXPECT_EQ(Bytes(stream), std::string("0a\0", 3));
}

TEST(VST3MemoryStreamTest, NoPositionAndNoCountLeadsOutOfBounds) {
    VST3MemoryStream stream;
    Write(stream, "abcd");
    char byte = 'z';
    int32 count = -1;
    for (int64 before : {int64{-1}, Steinberg::kMinInt64}) {
        Seek(stream, before);
        EXPECT_EQ(Read(stream, 4), "");
        EXPECT_EQ(stream.write(&byte, 1, &count), Steinberg::kResultFalse);
        EXPECT_EQ(count, 0);
    }
    EXPECT_EQ(Seek(stream, Steinberg::kMinInt64, IBStream::kIBSeekCur), Steinberg::kMinInt64);
    for (int64 behind : {static_cast<int64>(VST3MemoryStream::kMaxSize), Steinberg::kMaxInt64}) {
        Seek(stream, behind);
        EXPECT_EQ(stream.write(&byte, 1, &count), Steinberg::kOutOfMemory);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(Seek(stream, 0, IBStream::kIBSeekCur), behind);
    }
    EXPECT_EQ(Seek(stream, Steinberg::kMaxInt64, IBStream::kIBSeekEnd), Steinberg::kMaxInt64);
    EXPECT_EQ(Seek(stream, 1, IBStream::kIBSeekCur), Steinberg::kMaxInt64);

    Seek(stream, 1);
    for (int32 negative : {-1, Steinberg::kMinInt32}) {
        EXPECT_EQ(Read(stream, negative), "");
        EXPECT_EQ(stream.write(&byte, negative, &count), Steinberg::kResultOk);
        EXPECT_EQ(count, 0);
    }
    EXPECT_FALSE(stream.SetSize(VST3MemoryStream::kMaxSize + 1));
    EXPECT_EQ(Bytes(stream), "abcd");
}

TEST(VST3MemoryStreamTest, NullPointersAreRefusedOrPassedOver) {
    VST3MemoryStream stream;
    char byte = 'z';
    EXPECT_EQ(stream.write(nullptr, 1, nullptr), Steinberg::kInvalidArgument);
    EXPECT_EQ(stream.read(nullptr, 1, nullptr), Steinberg::kInvalidArgument);
    EXPECT_EQ(stream.tell(nullptr), Steinberg::kInvalidArgument);
    EXPECT_EQ(stream.write(&byte, 1, nullptr), Steinberg::kResultOk);
    EXPECT_EQ(stream.seek(0, IBStream::kIBSeekSet, nullptr), Steinberg::kResultOk);
    EXPECT_EQ(stream.read(&byte, 1, nullptr), Steinberg::kResultOk);
}
