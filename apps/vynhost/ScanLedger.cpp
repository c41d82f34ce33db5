#include "vynhost/ScanLedger.h"

#include "vynhost/ScanPlan.h"
#include "vynhost/StoredFiles.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <exception>
#include <set>
#include <string>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptorManager;
using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vyncore::UString;
using vyncore::UTF8String;
using vyncore::proplist::PropList;
using vyncore::proplist::utils::ReadPropList;
using vyncore::proplist::utils::WritePropList;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;
using State = ScanRecord::State;
using Verdict = ScanOutcome::Verdict;

namespace {

State StateOf(Verdict verdict) {
    if (verdict == Verdict::kFiled)
        return State::kFiled;
    return verdict == Verdict::kRefused ? State::kRefused : State::kBanned;
}

ScanRow::Verdict RowVerdictOf(Verdict verdict) {
    if (verdict == Verdict::kFiled)
        return ScanRow::Verdict::kFiled;
    return verdict == Verdict::kRefused ? ScanRow::Verdict::kRefused : ScanRow::Verdict::kBanned;
}

std::set<std::string> FindDisabled(PluginLocator const& module, std::vector<std::string> const& filters) {
    std::set<std::string> disabled;
    for (std::string const& id : filters) {
        auto const known = AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(UTF8to16(id));
        if (known && known->GetLocator() == module && !known->IsEnabled())
            disabled.insert(id);
    }
    return disabled;
}

// What a user should know of filters that another module had first.
std::string TellTwins(PluginLocator const& module, std::vector<std::string> const& filters) {
    for (std::string const& id : filters) {
        auto const known = AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(UTF8to16(id));
        if (known && !(known->GetLocator() == module))
            return "has a plug-in of an ID that is known from " + UTF16to8(known->GetLocator().GetPath());
    }
    return "";
}

/// Of the numbered lists those that are about the module. Returns how many are not.
int CopyOwn(PropList const& told, std::string const& stem, PluginLocator const& module, PropList& kept) {
    int number = 0;
    int count = 0;
    for (; PropList const* const entry = told.FindList(stem + std::to_string(number)); ++number) {
        UString text;
        entry->GetValue("locator", text);
        PluginLocator locator;
        locator.FromString(text);
        if (locator == module)
            kept.CreateList(stem + std::to_string(count++)) = *entry;
    }
    kept.SetValue("num_" + stem + "s", count);
    return number - count;
}

// The module may have got hold of the child's voice: what that says of other modules doesn't count.
UTF8String KeepOwn(PluginLocator const& module, UTF8String const& configuration) {
    PropList told;
    PropList kept;
    if (!ReadPropList(configuration, told))
        return {};
    int const others = CopyOwn(told, "plugin_info", module, kept) + CopyOwn(told, "descriptor", module, kept);
    return others == 0 ? configuration : WritePropList(kept);
}

UTF8String MakeSettingsText() {
    return PluginModuleInfoManager::GetInstance().GetConfigurationAsXML();
}

} // namespace

ScanLedger::ScanLedger(ScanPlan const& plan, ScanRecords& records, Observer observer)
    : mModules(plan.modules),
      mRecords(records),
      mObserver(std::move(observer)),
      mBansChanged(plan.changedBans),
      mSettings(GetSettingsFile()),
      mRecordsFile(GetRecordsFile()),
      mOnChange(PluginModuleInfoManager::GetInstance().GetPluginInfosChangedSignal().connect(
          [this] { mSettings.NoteChange(); })) {
    if (plan.changedSettings)
        mSettings.NoteChange();
    if (plan.changedRecords)
        mRecordsFile.NoteChange();
    for (std::size_t job = 0; job < mModules.size(); ++job) {
        ScanRecord const* const former = mRecords.Find(mModules[job]);
        bool const again = std::ranges::find(plan.retried, mModules[job]) != plan.retried.end();
        NoteOpening(job, former && again ? former->tries + 1 : 1);
    }
    if (mRecordsAhead)
        mRecordsFile.Save(mRecords.GetText());
}

void ScanLedger::NoteOpening(std::size_t job, int tries) {
    PluginLocator const& module = mModules[job];
    ScanRecord const* const former = mRecords.Find(module);
    mOpen[job] = former ? std::optional(*former) : std::nullopt;
    os::FileStamp const stamp = os::GetFileStamp(module.GetPath()).value_or(os::FileStamp{});
    mRecords.Put(module, {.stamp = stamp, .time = GetUnixTime(), .tries = tries});
    mRecordsAhead = true;
}

void ScanLedger::Admit(std::vector<std::size_t> const& jobs) {
    for (std::size_t const job : jobs) {
        PluginLocator const& module = mModules[job];
        if (!mOpen.contains(job)) {
            NoteOpening(job, 1);
            mRecordsFile.Save(mRecords.GetText());
        }
        mStamps[job] = os::GetFileStamp(module.GetPath()).value_or(os::FileStamp{});
        BannedPluginManager::GetInstance().AddBannedPlugin(module);
        mObserver(mRows.size(), &module);
    }
    if (mRecordsAhead)
        mRecordsFile.Finish();
    mRecordsAhead = false;
    SaveBans();
    mBansChanged = false;
}

void ScanLedger::Settle(ScanOutcome const& settled) {
    PluginLocator const& module = mModules[settled.job];
    ScanOutcome outcome = settled;
    auto& bans = BannedPluginManager::GetInstance();
    if (outcome.verdict == Verdict::kFiled)
        File(module, outcome);
    else
        PluginModuleInfoManager::GetInstance().RemovePluginLocators({module});
    if (outcome.verdict == Verdict::kBanned)
        bans.AddBannedPlugin(module);
    else
        bans.RemoveBannedPlugin(module);
    Note(module, outcome);
    mOpen.erase(settled.job);
    mBansChanged = true;
    mRecordsFile.NoteChange();
    mObserver(mRows.size(), nullptr);
}

void ScanLedger::File(PluginLocator const& module, ScanOutcome& outcome) {
    TakeIn(module, outcome);
    if (!PluginModuleInfoManager::GetInstance().FindPluginInfo(module)) {
        outcome.verdict = Verdict::kRefused;
        outcome.reason = "was described in a way that can't be read";
        outcome.filters.clear();
    } else if (outcome.reason.empty()) {
        outcome.reason = TellTwins(module, outcome.filters);
    }
}

// The user's word on the module and on its filters outlives what was known of them.
void ScanLedger::TakeIn(PluginLocator const& module, ScanOutcome const& outcome) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    UTF8String const configuration = KeepOwn(module, UTF8String(outcome.configuration));
    bool const enabled = inventory.IsPluginEnabled(module, false);
    std::set<std::string> const disabled = FindDisabled(module, outcome.filters);
    inventory.RemovePluginLocators({module});
    inventory.AddConfiguration(configuration, true);
    inventory.SetPluginEnabled(module, enabled);
    for (std::string const& id : disabled) {
        if (auto const filter = AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(UTF8to16(id)))
            filter->SetEnabled(false);
    }
}

void ScanLedger::Note(PluginLocator const& module, ScanOutcome const& outcome) {
    mRecords.Put(module, {.state = StateOf(outcome.verdict),
                          .reason = outcome.reason,
                          .stamp = mStamps[outcome.job],
                          .time = GetUnixTime(),
                          .seconds = outcome.seconds,
                          .filters = outcome.filters});
    mRows[outcome.job] = {.module = module,
                          .verdict = RowVerdictOf(outcome.verdict),
                          .reason = outcome.reason,
                          .seconds = outcome.seconds,
                          .filters = outcome.filters};
}

std::optional<std::uint64_t> ScanLedger::Rest() {
    auto const settings = mSettings.SaveWhenDue(MakeSettingsText);
    auto const records = mRecordsFile.SaveWhenDue([this] { return mRecords.GetText(); });
    SaveChangedBans();
    return settings && records ? std::min(settings, records) : (settings ? settings : records);
}

void ScanLedger::SaveChangedBans() {
    if (!mBansChanged)
        return;
    SaveBans();
    mBansChanged = false;
}

void ScanLedger::Withdraw() {
    for (auto const& [job, former] : mOpen) {
        PluginLocator const& module = mModules[job];
        BannedPluginManager::GetInstance().RemoveBannedPlugin(module);
        if (former)
            mRecords.Put(module, *former);
        else
            mRecords.Forget(module);
        mBansChanged = true;
        mRecordsFile.NoteChange();
    }
    mOpen.clear();
}

void ScanLedger::Finish() {
    std::exception_ptr failure;
    auto const attempt = [&failure](auto const& save) {
        try {
            save();
        } catch (...) {
            failure = failure ? failure : std::current_exception();
        }
    };
    attempt([this] { SaveChangedBans(); });
    attempt([this] { mSettings.Finish(MakeSettingsText); });
    attempt([this] { mRecordsFile.Finish([this] { return mRecords.GetText(); }); });
    if (failure)
        std::rethrow_exception(failure);
}

std::vector<ScanRow> ScanLedger::GetRows() const {
    std::vector<ScanRow> rows;
    for (auto const& [job, row] : mRows)
        rows.push_back(row);
    return rows;
}

} // namespace vynhost
