#include "vynaudiofilterhost/inventory/PluginModule.h"

#include "host/HostTest.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/utility/ModuleFunctions.h"

namespace {

using namespace vyntest;

class BareModule : public PluginModule {
public:
    BareModule(char const* path, bool canUnload) : PluginModule(vyncore::string::UTF8to16(path), canUnload) {}

    boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const&) override { return nullptr; }
    boost::intrusive_ptr<PluginModuleInfo> GetPluginInfo(std::vector<vyncore::UString>&) override { return nullptr; }

    int CountCall() const {
        auto* const function = vyncore::utility::GetFunctionPointerFromModuleImpl(GetOSModule(), "CountCall");
        return reinterpret_cast<int (*)()>(function)();
    }
};

TEST(PluginModuleTest, UnloadFreesTheCodeAndTheModuleLoadsAgain) {
    for (int round = 0; round < 2; ++round) {
        BareModule module(VYN_COUNTING_MODULE, true);
        ASSERT_TRUE(module.Load());
        EXPECT_EQ(module.CountCall(), 1) << "the end of the object frees the code, too";
        auto* const handle = module.GetOSModule();
        EXPECT_TRUE(module.Load());
        EXPECT_EQ(module.GetOSModule(), handle);
        module.Unload();
        EXPECT_EQ(module.GetOSModule(), nullptr);
        ASSERT_TRUE(module.Load());
        EXPECT_EQ(module.CountCall(), 1) << "the second Load took a reference that nobody gives back";
    }
}

TEST(PluginModuleTest, AModuleThatMayNotUnloadStaysPastItsObject) {
    {
        BareModule module(VYN_RESIDENT_MODULE, false);
        ASSERT_TRUE(module.Load());
        auto* const handle = module.GetOSModule();
        module.Unload();
        EXPECT_EQ(module.GetOSModule(), handle);
        EXPECT_EQ(module.CountCall(), 1);
    }
    BareModule again(VYN_RESIDENT_MODULE, true);
    ASSERT_TRUE(again.Load());
    EXPECT_EQ(again.CountCall(), 2);
}

TEST(PluginModuleTest, ALoadThatFailsSaysWhy) {
    for (char const* path : {"", "/no/such/file.so", "/dev/null"}) {
        BareModule module(path, true);
        EXPECT_EQ(module.GetLoadError(), u"");
        EXPECT_FALSE(module.Load()) << path;
        EXPECT_EQ(module.GetOSModule(), nullptr);
        EXPECT_NE(module.GetLoadError(), u"") << path;
    }
}

TEST(PluginModuleTest, AModuleWhoseStartUpCodeThrowsNeverLoads) {
#if defined(VYN_DLOPEN_MAY_NOT_THROW)
    GTEST_SKIP() << "the thread sanitizer's own dlopen does not survive an exception";
#endif
    int const expected = PluginModule::IsSystemLoaderBlocked() ? 0 : 1;
    int complaints = 0;
    vyncore::debug::SetTraceSink([&complaints](int, std::string_view, std::string_view text) {
        EXPECT_NE(text.find(VYN_THROWING_MODULE), std::string_view::npos) << text;
        ++complaints;
    });
    BareModule module(VYN_THROWING_MODULE, true);
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_FALSE(module.Load()) << "attempt " << attempt;
        EXPECT_EQ(module.GetOSModule(), nullptr);
        EXPECT_NE(module.GetLoadError(), u"");
    }
    vyncore::debug::SetTraceSink({});
    EXPECT_EQ(complaints, expected);
    EXPECT_TRUE(PluginModule::IsSystemLoaderBlocked());
}

} // namespace
