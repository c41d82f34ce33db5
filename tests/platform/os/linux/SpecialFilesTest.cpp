#include "os/FileSystem.h"
#include "os/ModuleLoader.h"
#include "support/TemporaryFolder.h"
#include "vyncore/utility/FileUtils.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using vyntest::TemporaryFolder;

// Whoever opens a pipe waits for its other end, so a hang here is the failure.
TEST(SpecialFilesTest, APipeIsNeverOpened) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe.so").c_str(), 0600), 0);
    EXPECT_EQ(os::GetFileKind(folder.Path16("pipe.so")), os::FileKind::kOther);
    std::string reason;
    EXPECT_EQ(os::OpenModule(folder.Path16("pipe.so"), reason), nullptr);
    EXPECT_FALSE(vyncore::utility::FileUtils::SimpleWriteStringToFile(folder.Path16("pipe.so"), "text"));
}

} // namespace
