#include "vynhost/ScanCommand.h"

#include "vynhost/CommandError.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/ProgressLine.h"
#include "vynhost/ScanLedger.h"
#include "vynhost/ScanPlan.h"
#include "vynhost/ScanPool.h"
#include "vynhost/ScanRecords.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"

#include "vyncore/strings/StringUtils.h"

#include "os/ChildProcess.h"
#include "os/InterruptDescriptor.h"
#include "os/Memory.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::PluginLocator;
using vyncore::UString;
using vyncore::string::UTF16to8;

namespace {

using Clock = std::chrono::steady_clock;

UString FindFolder(std::string const& folder) {
    std::error_code failed;
    if (!std::filesystem::is_directory(folder, failed))
        throw CommandError::OfFile(folder, failed ? "cannot be searched: " + failed.message()
                                                  : "cannot be searched: it is no folder");
    return MakeWholePath(folder);
}

ScanChildSettings MakeSettings(ScanRequest const& request) {
    constexpr std::size_t kMiB = std::size_t{1} << 20;
    std::size_t const memory =
        request.memory > 0 ? static_cast<std::size_t>(request.memory) * kMiB : os::GetMachineMemory() / 2;
    return {.program = os::GetOwnProgram(), .limits = {.timeout = request.timeout}, .memory = memory};
}

std::size_t CountJobs(ScanRequest const& request) {
    return request.jobs > 0 ? static_cast<std::size_t>(request.jobs) : std::thread::hardware_concurrency();
}

std::vector<std::string> ListLocators(std::vector<PluginLocator> const& modules) {
    std::vector<std::string> texts;
    for (PluginLocator const& module : modules)
        texts.push_back(UTF16to8(module.ToString()));
    return texts;
}

// Shows how far the scan is, and what was begun last.
ScanLedger::Observer ShowProgress(ProgressLine& line, std::size_t total) {
    return [&line, total, name = std::string()](std::size_t settled, PluginLocator const* begun) mutable {
        if (begun)
            name = UTF16to8(vyncore::filesupport::File(begun->GetPath()).GetTitle());
        line.Show(static_cast<double>(settled) / static_cast<double>(total), name);
    };
}

bool RunPool(ScanPlan const& plan, ScanRequest const& request, ScanLedger& ledger,
             os::InterruptDescriptor const& interrupt) {
    ScanPool pool(MakeSettings(request), ListLocators(plan.modules), CountJobs(request));
    try {
        return pool.Run(ledger, interrupt);
    } catch (...) {
        ledger.Withdraw();
        ledger.Finish();
        throw;
    }
}

std::vector<ScanRow> OpenModules(ScanPlan const& plan, ScanRecords& records, ScanRequest const& request,
                                 os::InterruptDescriptor const& interrupt) {
    ProgressLine line("scanning");
    ScanLedger ledger(plan, records, ShowProgress(line, plan.modules.size()));
    bool const complete = RunPool(plan, request, ledger, interrupt);
    if (!complete)
        ledger.Withdraw();
    ledger.Finish();
    std::vector<ScanRow> rows = ledger.GetRows();
    if (!complete)
        throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                           "interrupted: " + std::to_string(rows.size()) + " of " +
                               std::to_string(plan.modules.size()) + " modules were opened, and are saved");
    return rows;
}

using Rows = std::map<PluginLocator, ScanRow>;

void Add(std::vector<ScanRow> rows, Rows& all) {
    for (ScanRow& row : rows)
        all.insert_or_assign(row.module, std::move(row));
}

// What becomes of a module may cost another one its filters, which shared an ID with it.
Rows OpenAll(ScanPlan plan, ScanRecords& records, ScanRequest const& request) {
    // To the end of all saving: a second wish to end must not come into the midst of that.
    os::InterruptDescriptor const interrupt;
    Rows rows;
    std::set<PluginLocator> tried;
    bool const mayOrphan = !plan.modules.empty() || plan.changedSettings;
    do {
        Add(plan.rows, rows);
        Add(OpenModules(plan, records, request, interrupt), rows);
        plan = mayOrphan ? MakeOrphanPlan(records, tried) : ScanPlan{};
    } while (!plan.modules.empty());
    return rows;
}

} // namespace

std::string RunScan(ScanRequest const& request) {
    auto const start = Clock::now();
    std::vector<UString> folders;
    std::ranges::transform(request.folders, std::back_inserter(folders), FindFolder);
    Session const session;
    StoredFilesLock const lock;
    LoadStoredFiles();
    ScanRecords records;
    records.Load(GetRecordsFile());
    TellNamelessFiles(folders);
    ScanReport report;
    for (auto& [module, row] : OpenAll(MakeScanPlan(folders, request.all, records), records, request))
        report.rows.push_back(std::move(row));
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return request.json ? FormatJSON(report) : FormatTable(report);
}

} // namespace vynhost
