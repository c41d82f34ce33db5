#include "vynhost/ScanPlan.h"

#include "vynhost/ModuleSearch.h"
#include "vynhost/ScanRecords.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <set>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptorManager;
using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vyncore::UString;
using State = ScanRecord::State;
using Verdict = ScanRow::Verdict;

namespace {

// A filter whose ID another module had first may be without a descriptor when that module has gone.
bool IsFiled(PluginLocator const& module, ScanRecord const& record) {
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    return PluginModuleInfoManager::GetInstance().FindPluginInfo(module) &&
           std::ranges::all_of(record.filters, [&](std::string const& id) {
               return catalogue.GetComponentDescriptorForID(vyncore::string::UTF8to16(id)) != nullptr;
           });
}

class Planner {
public:
    Planner(std::vector<UString> const& folders, bool all, ScanRecords& records)
        : mFolders(folders), mAll(all), mRecords(records) {}

    ScanPlan Make() {
        LiftBans();
        std::vector<PluginLocator> vanished;
        std::vector<PluginLocator> const found = SearchModules(mFolders, vanished);
        for (PluginLocator const& module : vanished)
            Miss(module);
        for (std::vector<PluginLocator> const& modules : {found, mLifted}) {
            for (PluginLocator const& module : modules)
                Judge(module);
        }
        TellBans();
        ForgetRecords();
        PutLargestFirst();
        return std::move(mPlan);
    }

private:
    bool IsMeant(PluginLocator const& module) const {
        UString const path = module.GetPath();
        return mFolders.empty() ||
               std::ranges::any_of(mFolders, [&](UString const& folder) { return IsBelow(path, folder); });
    }

    void LiftBans() {
        auto& bans = BannedPluginManager::GetInstance();
        std::vector<PluginLocator> const banned(bans.BannedBegin(), bans.BannedEnd());
        for (PluginLocator const& module : banned) {
            ScanRecord const* const record = mRecords.Find(module);
            if (!record || !IsMeant(module) || !IsLifted(module, *record))
                continue;
            bans.RemoveBannedPlugin(module);
            mLifted.push_back(module);
            if (record->state == State::kOpening && !HasChanged(module, *record))
                mPlan.retried.push_back(module);
            mPlan.changedBans = true;
        }
    }

    // A scan that was ended from outside says little against the modules that were open just then; a second time is
    // too much of a coincidence.
    static bool IsLifted(PluginLocator const& module, ScanRecord const& record) {
        if (record.state == State::kBanned || record.tries >= kMostScanTries)
            return HasChanged(module, record);
        return record.state == State::kOpening && os::GetFileStamp(module.GetPath());
    }

    // Known, but not among what was found.
    void Miss(PluginLocator const& module) {
        if (!IsMeant(module))
            return;
        bool const banned = BannedPluginManager::GetInstance().IsPluginBanned(module);
        bool const exists = vyncore::filesupport::File(module.GetPath()).Exists();
        // One that lies where nobody looks as a rule was found there on demand.
        if (exists && !banned)
            return Judge(module);
        PluginModuleInfoManager::GetInstance().RemovePluginLocators({module});
        mPlan.changedSettings = true;
        if (!banned)
            mPlan.rows.push_back({.module = module, .verdict = Verdict::kVanished, .reason = "is gone"});
    }

    // Overlapping folders lead to one module more than once.
    void Judge(PluginLocator const& module) {
        if (!mJudged.insert(module).second)
            return;
        ScanRecord const* const record = mRecords.Find(module);
        bool const same = record && !mAll && os::GetFileStamp(module.GetPath()) == record->stamp;
        if (same && record->state == State::kRefused)
            mPlan.rows.push_back({.module = module, .verdict = Verdict::kRefused, .reason = record->reason});
        else if (same && record->state == State::kFiled && IsFiled(module, *record))
            mPlan.rows.push_back(
                {.module = module, .verdict = Verdict::kKnown, .reason = record->reason, .filters = record->filters});
        else
            mPlan.modules.push_back(module);
    }

    void TellBans() {
        auto const& bans = BannedPluginManager::GetInstance();
        for (auto it = bans.BannedBegin(); it != bans.BannedEnd(); ++it) {
            ScanRecord const* const record = mRecords.Find(*it);
            if (IsMeant(*it) && vyncore::filesupport::File(it->GetPath()).Exists())
                mPlan.rows.push_back({.module = *it, .verdict = Verdict::kBanned, .reason = DescribeBan(record)});
        }
    }

    void ForgetRecords() {
        std::vector<PluginLocator> gone;
        auto const& bans = BannedPluginManager::GetInstance();
        for (auto const& [key, entry] : mRecords.GetAll()) {
            if (IsMeant(entry.module) && !mJudged.contains(entry.module) && !bans.IsPluginBanned(entry.module) &&
                !vyncore::filesupport::File(entry.module.GetPath()).Exists())
                gone.push_back(entry.module);
        }
        for (PluginLocator const& module : gone)
            mRecords.Forget(module);
        mPlan.changedRecords = !gone.empty();
    }

    // What takes longest to open had better not be the last to be begun. Size is the best guess there is.
    void PutLargestFirst() {
        auto const size = [](PluginLocator const& module) {
            return os::GetFileStamp(module.GetPath()).value_or(os::FileStamp{}).size;
        };
        std::vector<std::pair<std::uint64_t, PluginLocator>> sized;
        for (PluginLocator const& module : mPlan.modules)
            sized.emplace_back(size(module), module);
        std::ranges::stable_sort(sized, std::ranges::greater(), [](auto const& pair) { return pair.first; });
        std::ranges::transform(sized, mPlan.modules.begin(), [](auto const& pair) { return pair.second; });
    }

    std::vector<UString> const& mFolders;
    bool const mAll;
    ScanRecords& mRecords;
    std::set<PluginLocator> mJudged;
    std::vector<PluginLocator> mLifted; ///< some may lie where nobody looks as a rule
    ScanPlan mPlan;
};

} // namespace

ScanPlan MakeScanPlan(std::vector<UString> const& folders, bool all, ScanRecords& records) {
    return Planner(folders, all, records).Make();
}

ScanPlan MakeOrphanPlan(ScanRecords const& records, std::set<PluginLocator>& tried) {
    ScanPlan plan;
    auto const& bans = BannedPluginManager::GetInstance();
    for (auto const& [key, entry] : records.GetAll()) {
        if (entry.record.state == State::kFiled &&
            PluginModuleInfoManager::GetInstance().FindPluginInfo(entry.module) &&
            !IsFiled(entry.module, entry.record) && !bans.IsPluginBanned(entry.module) &&
            os::GetFileStamp(entry.module.GetPath()) && tried.insert(entry.module).second)
            plan.modules.push_back(entry.module);
    }
    return plan;
}

} // namespace vynhost
