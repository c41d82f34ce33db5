#include "vynaccelerate/Buffers.h"
#include "support/NoAllocationScope.h"
#include "vynaccelerate/AlignedBuffer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace {

using vynaccelerate::AlignedBuffer;

TEST(BuffersTest, ABufferIsAlignedAndImpossibleOnesAreNull) {
    for (std::size_t const count : {std::size_t{0}, std::size_t{1}, std::size_t{1000}}) {
        float* const buffer = vynaccelerate::utility::Malloc_Float(count);
        ASSERT_NE(buffer, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer) % 64, 0u);
        vynaccelerate::utility::Free(buffer);
    }
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
    for (std::size_t const count : {kMost, kMost / sizeof(float), kMost / sizeof(float) + 2})
        EXPECT_EQ(vynaccelerate::utility::Malloc_Float(count), nullptr);
    vynaccelerate::utility::Free(nullptr);
}

TEST(BuffersTest, CopyAndZeroTouchExactlyTheirSamples) {
    std::array<float, 4> const source{1, 2, 3, 4};
    std::array<float, 4> target{9, 9, 9, 9};
    vyntest::NoAllocationScope const scope;
    vynaccelerate::utility::Copy(3, source.data(), target.data());
    EXPECT_EQ(target, (std::array<float, 4>{1, 2, 3, 9}));
    vynaccelerate::utility::Zero(2, target.data());
    EXPECT_EQ(target, (std::array<float, 4>{0, 0, 3, 9}));
    vynaccelerate::utility::Copy(0, nullptr, nullptr);
    vynaccelerate::utility::Zero(0, nullptr);
}

TEST(AlignedBufferTest, ABufferStartsSilentAndMovesWhole) {
    AlignedBuffer first(100);
    ASSERT_NE(first.Data(), nullptr);
    EXPECT_TRUE(std::all_of(first.Data(), first.Data() + 100, [](float sample) { return sample == 0.0f; }));
    float const* const samples = first.Data();
    AlignedBuffer second(std::move(first));
    EXPECT_EQ(second.Data(), samples);
    EXPECT_EQ(second.Size(), 100u);
    AlignedBuffer third(7);
    third = std::move(second);
    EXPECT_EQ(third.Data(), samples);
    EXPECT_EQ(third.Size(), 100u);
    third = AlignedBuffer(std::numeric_limits<std::size_t>::max());
    EXPECT_EQ(third.Data(), nullptr);
    EXPECT_EQ(third.Size(), 0u);
}

} // namespace
