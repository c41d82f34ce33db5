#include "vynhost/DoctorCommand.h"

#include "vynhost/CommandError.h"
#include "vynhost/DoctorPool.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/ProgressLine.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/TechnologyName.h"

#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
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
#include <tuple>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vyncore::UString;
using vyncore::string::UTF16to8;

namespace {

using Clock = std::chrono::steady_clock;

/// The plug-ins to be examined. Modules may be named more than once, and by several names.
class DoctorPlan {
public:
    void AddFolder(std::vector<UString> const& folders) {
        std::vector<PluginLocator> vanished;
        for (PluginLocator const& module : SearchModules(folders, vanished))
            Add(module, {});
        auto const& bans = BannedPluginManager::GetInstance();
        for (auto ban = bans.BannedBegin(); ban != bans.BannedEnd(); ++ban) {
            std::error_code none;
            std::string const path = UTF16to8(ban->GetPath());
            if (IsBelowAny(*ban, folders) && std::filesystem::exists(path, none))
                mPassedOver.insert(path);
        }
    }

    void AddNamed(std::string const& plugin) {
        std::error_code none;
        std::filesystem::path const path = plugin;
        if (std::filesystem::is_directory(path, none) && path.extension() != ".vst3")
            return AddFolder({MakeWholePath(plugin)});
        KnownFilters const filters = std::filesystem::exists(path, none) ? KnownFilters() : FindKnownFilters(plugin);
        if (filters.size() > 1)
            ThrowAmbiguous(plugin, filters);
        if (!filters.empty())
            return Add(filters.front()->GetLocator(), UTF16to8(filters.front()->GetUniqueID()));
        for (PluginLocator const& module : FindModules(plugin))
            Add(module, {});
    }

    std::vector<DoctorTask> const& GetTasks() const noexcept { return mTasks; }

    void Describe(DoctorReport& report) {
        for (DoctorTask const& task : mTasks)
            mPassedOver.erase(task.path);
        report.passedOver.assign(mPassedOver.begin(), mPassedOver.end());
        for (DoctorRow& row : report.rows)
            row.technology = mTechnologies[row.path];
        std::ranges::sort(report.rows, {}, [](DoctorRow const& row) { return std::tie(row.path, row.id); });
    }

private:
    static bool IsBelowAny(PluginLocator const& module, std::vector<UString> const& folders) {
        return folders.empty() ||
               std::ranges::any_of(folders, [&](UString const& folder) { return IsBelow(module.GetPath(), folder); });
    }

    void Add(PluginLocator const& module, std::string const& classID) {
        std::string const path = UTF16to8(module.GetPath());
        mTechnologies[path] = TechnologyName(module.GetTechnologyType());
        if (mPlanned.emplace(path, classID).second)
            mTasks.push_back({.path = path, .classID = classID, .steps = ListDoctorSteps()});
    }

    std::vector<DoctorTask> mTasks;
    std::set<std::pair<std::string, std::string>> mPlanned;
    std::map<std::string, std::string> mTechnologies;
    std::set<std::string> mPassedOver;
};

DoctorPlan MakePlan(DoctorRequest const& request) {
    Session const session;
    LoadStoredFiles();
    DoctorPlan plan;
    if (request.plugins.empty())
        plan.AddFolder({});
    for (std::string const& plugin : request.plugins)
        plan.AddNamed(plugin);
    return plan;
}

DoctorSettings MakeSettings(DoctorRequest const& request) {
    constexpr std::size_t kMiB = std::size_t{1} << 20;
    return {.program = os::GetOwnProgram(),
            .limits = {.timeout = request.timeout},
            .memory =
                request.memory > 0 ? static_cast<std::size_t>(request.memory) * kMiB : os::GetMachineMemory() / 2};
}

DoctorPool::Observer ShowProgress(ProgressLine& line) {
    return [&line](std::size_t done, std::size_t total, DoctorRow const& begun) {
        line.Show(static_cast<double>(done) / static_cast<double>(std::max<std::size_t>(total, 1)),
                  begun.name.empty() ? std::filesystem::path(begun.path).stem().string() : begun.name);
    };
}

} // namespace

std::string RunDoctor(DoctorRequest const& request) {
    auto const start = Clock::now();
    os::InterruptDescriptor const interrupt;
    DoctorPlan plan = MakePlan(request);
    DoctorReport report;
    {
        ProgressLine line("examining");
        std::size_t const jobs =
            request.jobs > 0 ? static_cast<std::size_t>(request.jobs) : std::thread::hardware_concurrency();
        DoctorPool pool(MakeSettings(request), plan.GetTasks(), jobs, ShowProgress(line));
        report.interrupted = !pool.Run(interrupt);
        report.rows = pool.TakeRows();
    }
    plan.Describe(report);
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::string text = request.json ? FormatJSON(report) : FormatTable(report);
    bool const foundNothing = !request.plugins.empty() && report.rows.empty();
    if (foundNothing || !report.IsFine())
        throw FailedReport{text};
    return text;
}

} // namespace vynhost
