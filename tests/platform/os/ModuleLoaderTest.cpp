#include "os/ModuleLoader.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

namespace {

using vyntest::TemporaryFolder;

std::filesystem::path const kPlain = OS_PLAIN_MODULE;

std::string WhyNotOpened(std::filesystem::path const& path) {
    std::string reason = "not set";
    HINSTANCE__* const module = os::OpenModule(path.u16string(), reason);
    EXPECT_EQ(module, nullptr) << path;
    os::CloseModule(module);
    EXPECT_FALSE(reason.empty()) << path;
    EXPECT_EQ(reason.find_first_of("\r\n"), std::string::npos) << reason;
    EXPECT_EQ(path.empty() ? std::string::npos : reason.find(path.string()), std::string::npos) << reason;
    return reason;
}

TEST(ModuleLoaderTest, FindsTheExportsOfAnOpenModuleWhichLendsNothingToOthers) {
    std::string reason = "left over";
    HINSTANCE__* const module = os::OpenModule(kPlain.u16string(), reason);
    ASSERT_NE(module, nullptr) << reason;
    EXPECT_EQ(reason, "");
    auto const answer = reinterpret_cast<int (*)()>(os::FindExport(module, "PlainAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(os::FindExport(module, "NoSuchExport"), nullptr);
    EXPECT_EQ(os::FindExport(module, nullptr), nullptr);
    EXPECT_EQ(os::FindExport(nullptr, "PlainAnswer"), nullptr);
    // One that needs what only this module has.
    EXPECT_NE(WhyNotOpened(OS_NEEDY_MODULE).find("PlainAnswer"), std::string::npos);
    os::CloseModule(module);
    os::CloseModule(nullptr);
}

TEST(ModuleLoaderTest, SaysInOneLineWhyAPathDoesNotOpen) {
    TemporaryFolder const folder;
    folder.AddFile("text.so", "this is no module");
    WhyNotOpened({});
    WhyNotOpened(folder.Path());
    WhyNotOpened(folder.Path() / "missing.so");
    WhyNotOpened(folder.Path() / "text.so");
    std::string reason;
    EXPECT_EQ(os::OpenModule(kPlain.u16string() + u'\0' + u"cut", reason), nullptr);
}

TEST(ModuleLoaderTest, ABareNameIsAFileInTheWorkingFolder) {
    EXPECT_EQ(WhyNotOpened("libm.so.6"), WhyNotOpened("no-such-file"));

    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(kPlain.parent_path());
    std::string reason;
    HINSTANCE__* const module = os::OpenModule(kPlain.filename().u16string(), reason);
    std::filesystem::current_path(before);
    EXPECT_NE(module, nullptr) << reason;
    os::CloseModule(module);
}

TEST(ModuleLoaderTest, WhatStartUpCodeThrowsIsAReasonAndLoadingGoesOn) {
#if defined(VYN_DLOPEN_MAY_NOT_THROW)
    GTEST_SKIP() << "the thread sanitizer's own dlopen does not survive an exception";
#endif
    std::string const why = WhyNotOpened(OS_THROWING_MODULE);
    EXPECT_NE(why.find("first line second line"), std::string::npos) << why;
    // The half-made module must not come back as a good one.
    EXPECT_EQ(WhyNotOpened(OS_THROWING_MODULE), why);
    std::string reason;
    HINSTANCE__* const module = os::OpenModule(kPlain.u16string(), reason);
    EXPECT_NE(module, nullptr) << reason;
    EXPECT_TRUE(os::IsLoaderBlocked());
    // Each of these would wait for ever for the lock that the module left behind.
    std::thread([module] {
        EXPECT_EQ(os::FindExport(module, "PlainAnswer"), nullptr);
        WhyNotOpened(kPlain);
        os::CloseModule(module);
    }).join();
    EXPECT_NE(os::FindExport(module, "PlainAnswer"), nullptr);
    os::CloseModule(module);
}

} // namespace
