#include "os/CallQueueDescriptor.h"
#include "os/Clock.h"

#include <gtest/gtest.h>

#include <poll.h>

namespace {

bool IsReadable(os::CallQueueDescriptor const& descriptor, int milliseconds) {
    pollfd waited{static_cast<int>(descriptor.Handle()), POLLIN, 0};
    return poll(&waited, 1, milliseconds) == 1;
}

TEST(CallQueueDescriptorTest, ItIsReadableFromTheArmedTimeUntilItIsArmedAnew) {
    constexpr std::uint64_t kHour = 3'600'000'000'000;
    os::CallQueueDescriptor descriptor;
    ASSERT_GE(descriptor.Handle(), 0);
    EXPECT_FALSE(IsReadable(descriptor, 0));

    std::uint64_t const soon = os::GetMonotonicNanos() + 5'000'000;
    descriptor.Arm(soon);
    EXPECT_TRUE(IsReadable(descriptor, 10'000));
    EXPECT_GE(os::GetMonotonicNanos(), soon);
    descriptor.Arm(soon);
    EXPECT_TRUE(IsReadable(descriptor, 0));
    descriptor.Arm(os::GetMonotonicNanos() + kHour);
    EXPECT_FALSE(IsReadable(descriptor, 0));
    descriptor.Arm(0);
    EXPECT_TRUE(IsReadable(descriptor, 10'000));
    descriptor.Disarm();
    EXPECT_FALSE(IsReadable(descriptor, 0));
}

} // namespace
