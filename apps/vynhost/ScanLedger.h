#pragma once

#include "vynhost/BackgroundSaver.h"
#include "vynhost/ScanPool.h"
#include "vynhost/ScanRecords.h"
#include "vynhost/ScanReport.h"

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/strings/UString.h"

#include <boost/signals2/connection.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace vynhost {

struct ScanPlan;

/// The books of a scan: the library's inventory, catalogue and dynamic ban list, the records, and their files.
/// 1. A module stands on the ban list on the disk before it is opened, and until what became of it is known: whatever
///    ends this process, the list is right. Before that the records say that it is to be opened, which tells such a ban
///    from those that are to stay.
/// 2. What is known of a module goes to the disk soon (BackgroundSaver), whatever the others do. Until then it is one
///    that is to be opened.
/// All failures to save are CommandErrors.
class ScanLedger final : public IScanLedger {
public:
    /// Told of each module that begins or ends: how many have ended, and which has begun (null: none).
    using Observer = std::function<void(std::size_t settled, vynaudiofilterhost::PluginLocator const* begun)>;

    /// The plan and the records must outlive the ledger. All modules of the plan are noted as to be opened.
    /// [main-thread]
    ScanLedger(ScanPlan const& plan, ScanRecords& records, Observer observer);

    /// [main-thread]
    void Admit(std::vector<std::size_t> const& jobs) override;
    /// [main-thread]
    void Settle(ScanOutcome const& settled) override;
    /// Saves what has changed.
    /// [main-thread]
    std::optional<std::uint64_t> Rest() override;

    /// Makes modules that are not settled what they were before. For a scan that is broken off.
    /// [main-thread]
    void Withdraw();

    /// Saves what has changed, the bans first, and waits until all is on the disk. What can't be saved keeps nothing
    /// else from being saved.
    /// [main-thread]
    void Finish();

    /// What became of the plan's modules that were settled.
    /// [main-thread]
    std::vector<ScanRow> GetRows() const;

private:
    using Locator = vynaudiofilterhost::PluginLocator;

    void NoteOpening(std::size_t job, int tries);
    void File(Locator const& module, ScanOutcome& outcome);
    void TakeIn(Locator const& module, ScanOutcome const& outcome);
    void Note(Locator const& module, ScanOutcome const& outcome);
    void SaveChangedBans();

    std::vector<Locator> const& mModules;
    ScanRecords& mRecords;
    Observer mObserver;
    std::map<std::size_t, std::optional<ScanRecord>> mOpen; ///< not settled, with what was remembered before
    std::map<std::size_t, os::FileStamp> mStamps;           ///< of the files when they were last opened
    std::map<std::size_t, ScanRow> mRows;
    bool mBansChanged;
    bool mRecordsAhead = false; ///< the records must be on the disk before a ban is
    BackgroundSaver mSettings;
    BackgroundSaver mRecordsFile;
    boost::signals2::scoped_connection mOnChange; ///< of the inventory
};

} // namespace vynhost
