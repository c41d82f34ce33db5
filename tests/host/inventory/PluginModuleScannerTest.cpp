#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"

#include "host/HostTest.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/ScanProgress.h"
#include "vyncore/strings/StringUtils.h"

#include <stdexcept>

namespace {

using namespace vyntest;

constexpr TechnologyType kFirst{70}, kSecond{71}, kMakesNoContext{72};

std::vector<std::string> theCalls;

/// Takes a step for each module and files it, disabled; a module called "throws" throws.
class FakeContext : public PluginScanContext {
public:
    void StartScan(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3) override {
        theCalls.push_back("start " + std::to_string(locators.size()) + (flag1 ? " 1" : " 0") + (flag2 ? "1" : "0") +
                           (flag3 ? "1" : "0"));
        mProgress.Start(locators);
    }
    bool GetProgress(PluginLocator& locator, UString& detail, unsigned long long& index) const override {
        return mProgress.Report(locator, detail, index);
    }
    bool Continue() override {
        if (!mProgress.HasModule())
            return false;
        PluginLocator const module = mProgress.GetModule();
        if (module.GetPath() == u"throws")
            throw std::runtime_error("the context gave up");
        theCalls.push_back(vyncore::string::UTF16to8(module.GetPath()));
        PluginModuleInfoManager::GetInstance().AddPluginModuleInfo(
            new PluginModuleInfo(module, u"", u"", 0, module.GetTechnologyType(), false, false));
        mProgress.NextModule();
        return mProgress.HasModule();
    }

private:
    ScanProgress mProgress;
};

class PluginModuleScannerTest : public testing::Test {
protected:
    PluginModuleScannerTest() {
        for (TechnologyType const type : {kSecond, kFirst, kMakesNoContext}) {
            auto const make = [type](auto const&) { return type == kMakesNoContext ? nullptr : new FakeContext; };
            inventory.AddPluginTechnology(new PluginTechnology(type, {}, make, {}, {}, false));
        }
        theCalls.clear();
    }
    ~PluginModuleScannerTest() override { inventory.ClearAll(true); }

    void Scan(std::vector<PluginLocator> const& locators) {
        (scanner = new PluginModuleScanner(locators, true, false, true))->BeginScan();
    }

    /// "path current/total", or "none" behind the end.
    std::string Progress() const {
        PluginLocator locator;
        UString detail;
        int current = 0, total = 0;
        if (!scanner->GetCurrentProgressInfo(locator, detail, current, total))
            return "none";
        return vyncore::string::UTF16to8(locator.GetPath()) + " " + std::to_string(current) + "/" +
               std::to_string(total);
    }

    static inline auto& inventory = PluginModuleInfoManager::GetInstance();
    boost::intrusive_ptr<PluginModuleScanner> scanner;
};

TEST_F(PluginModuleScannerTest, ModulesAreScannedTechnologyByTechnology) {
    Scan({{kSecond, u"c"},
          {kFirst, u"a"},
          {kSecond, u"d"},
          {kMakesNoContext, u"x"},
          {TechnologyType{99}, u"y"},
          {kFirst, u"b"},
          {kSecond, u"throws"}});
    EXPECT_EQ(Progress(), "a 1/5");
    EXPECT_TRUE(scanner->ContinueScan());
    EXPECT_EQ(Progress(), "b 2/5");
    EXPECT_TRUE(scanner->ContinueScan());
    EXPECT_THAT(theCalls, ElementsAre("start 2 101", "start 3 101", "a", "b", "c")) << "a technology's end is no step";
    EXPECT_EQ(Progress(), "d 4/5");
    EXPECT_TRUE(scanner->ContinueScan());
    EXPECT_THROW(scanner->ContinueScan(), std::runtime_error);
    EXPECT_EQ(Progress(), "throws 5/5");
}

TEST_F(PluginModuleScannerTest, WhatWasEnabledBeforeIsEnabledAfterwards) {
    for (char16_t const* const path : {u"a", u"b", u"c"})
        inventory.AddPluginModuleInfo(
            new PluginModuleInfo({kFirst, path}, u"", u"", 0, kFirst, path[0] != u'b', false));
    Scan({{kFirst, u"a"}, {kFirst, u"b"}});
    inventory.RemovePluginLocators({{kFirst, u"c"}});
    EXPECT_TRUE(scanner->ContinueScan());
    EXPECT_FALSE(scanner->ContinueScan());
    EXPECT_EQ(Progress(), "none");
    EXPECT_TRUE(inventory.GetEnabledPlugins().empty());
    scanner->EndScan();
    EXPECT_THAT(inventory.GetEnabledPlugins(), ElementsAre(PluginLocator(kFirst, u"a")));
    scanner->BeginScan();
    EXPECT_FALSE(scanner->ContinueScan());
    EXPECT_EQ(theCalls.size(), 3u) << "a second run finds nothing left";
}

} // namespace
