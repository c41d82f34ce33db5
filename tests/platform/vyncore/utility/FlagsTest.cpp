#include "vyncore/utility/Flags.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(FlagsTest, BitsBeyondTheWordCountModuloItsWidth) {
    vyncore::utility::Flags<std::uint64_t> flags;
    flags.Set(63);
    flags.Set(64);
    EXPECT_EQ(flags.GetBits(), (std::uint64_t{1} << 63) | 1);
    EXPECT_TRUE(flags.Test(127));
    flags.Assign(0, false);
    flags.Clear(63);
    EXPECT_EQ(flags, (vyncore::utility::Flags<std::uint64_t>()));

    vyncore::utility::Flags<std::uint8_t> narrow;
    narrow.SetAll();
    narrow.Clear(15);
    EXPECT_EQ(narrow.GetBits(), 0x7F);
}

} // namespace
