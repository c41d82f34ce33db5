#include "os/FileLock.h"

#include "os/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using os::FileLock;
using vyntest::TemporaryFolder;

TEST(FileLockTest, OneAtATimeAndTheOtherIsToldWhoAndAFileThatCanNotBeIsAnError) {
    TemporaryFolder const folder;
    {
        FileLock const first(folder.Path16("lock"));
        EXPECT_TRUE(first.IsHeld());
        FileLock const second(folder.Path16("lock"));
        EXPECT_FALSE(second.IsHeld());
        EXPECT_EQ(second.GetHolder(), os::GetProcessNumber());
        EXPECT_TRUE(FileLock(folder.Path16("another")).IsHeld());
    }
    EXPECT_TRUE(FileLock(folder.Path16("lock")).IsHeld());
    EXPECT_THROW(FileLock(folder.Path16("no folder/lock")), std::runtime_error);
    EXPECT_THROW(FileLock(folder.Path16()), std::runtime_error);
}

} // namespace
