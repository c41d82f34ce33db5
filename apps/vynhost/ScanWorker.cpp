#include "vynhost/ScanWorker.h"

#include "vynhost/ProcessTraces.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/WorkerLink.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/strings/StringUtils.h"

#include "os/Memory.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>
#include <vector>

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptorManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModule;
using vynaudiofilterhost::PluginModuleInfoManager;
using vynaudiofilterhost::PluginModuleScanner;
using vyncore::UString;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;

namespace {

PluginLocator ReadRequest(std::string const& line) {
    auto const text = nlohmann::json::parse(line, nullptr, false);
    PluginLocator locator;
    if (text.is_string())
        locator.FromString(UTF8to16(text.get<std::string>()));
    return locator;
}

void Scan(PluginLocator const& module, WorkerLink const& link) {
    constexpr bool kOpenShells = true;
    constexpr bool kWithoutInstances = false;
    constexpr bool kInternalFilters = false;
    boost::intrusive_ptr<PluginModuleScanner> const scanner(
        new PluginModuleScanner({module}, kOpenShells, kWithoutInstances, kInternalFilters));
    scanner->BeginScan();
    PluginLocator locator;
    UString detail;
    int current = 0;
    int total = 0;
    while (scanner->GetCurrentProgressInfo(locator, detail, current, total)) {
        link.Send(ScanFrameKind::kProgress, UTF16to8(detail));
        scanner->ContinueScan();
        Session::RunDueCalls();
    }
    scanner->EndScan();
}

// Asked of a module that left no trace: either it can be had no more than before, or it says what the scan was told.
std::string WhyRefused(PluginLocator const& locator) {
    UString reason;
    auto const module = vynaudiofilterhost::OpenPluginModule(locator.GetPath(), reason);
    if (module)
        reason = module->GetRefusalReason();
    return reason.empty() ? "holds no plug-in that can be made" : UTF16to8(reason);
}

// A VST3 module is still loaded and says again what it holds. To ask one of VST 2.x means to make and open an effect,
// so only shells are asked: any other was filed for the one effect that it has.
std::size_t CountClasses(PluginLocator const& locator) {
    auto const info = PluginModuleInfoManager::GetInstance().FindPluginInfo(locator);
    if (info->GetType() == vynaudiofilterhost::kTechnologyVST && !info->IsShell())
        return 1;
    UString reason;
    auto const module = vynaudiofilterhost::OpenPluginModule(locator.GetPath(), reason);
    std::vector<UString> ids;
    if (module)
        module->GetPluginInfo(ids);
    return std::set<UString>(ids.begin(), ids.end()).size();
}

void ReportFiled(PluginLocator const& locator, WorkerLink const& link) {
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    link.Send(ScanFrameKind::kFiled, PluginModuleInfoManager::GetInstance().GetConfigurationAsXML());
    std::set<UString> filters;
    for (auto it = catalogue.InfoBegin(); it != catalogue.InfoEnd(); ++it) {
        if ((*it)->GetLocator() == locator && filters.insert((*it)->GetUniqueID()).second)
            link.Send(ScanFrameKind::kFilter, UTF16to8((*it)->GetUniqueID()));
    }
    std::size_t const classes = std::max(CountClasses(locator), filters.size());
    if (classes == 0)
        link.Send(ScanFrameKind::kNote, "holds no audio plug-in");
    else if (std::size_t const missing = classes - filters.size(); missing > 0)
        link.Send(ScanFrameKind::kNote,
                  std::to_string(missing) + " of its " + std::to_string(classes) + " plug-ins could not be made");
}

void ScanOne(PluginLocator const& locator, WorkerLink const& link) {
    // Each module has the library's life to itself: it is unloaded, and what goes wrong then is put to it.
    Session const session;
    auto& inventory = PluginModuleInfoManager::GetInstance();
    inventory.ClearAll(true);
    try {
        Scan(locator, link);
        if (inventory.FindPluginInfo(locator))
            ReportFiled(locator, link);
        else
            link.Send(ScanFrameKind::kRefused, WhyRefused(locator));
    } catch (std::exception const& error) {
        link.Send(ScanFrameKind::kRefused, std::string("threw an exception: ") + error.what());
    } catch (...) {
        link.Send(ScanFrameKind::kRefused, "threw an exception");
    }
}

} // namespace

std::string MakeScanRequest(std::string const& locator) {
    return nlohmann::json(locator).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

void RunScanWorker(ScanWorkerRequest const& request) {
    WorkerLink const link;
    LoadUnsupportedPlugins();
    ProcessTraces const traces;
    link.Send(ScanFrameKind::kReady);
    while (std::optional<std::string> const line = link.Receive()) {
        // Anew for each: what others have left behind isn't its fault.
        if (request.memory != 0)
            os::LimitOwnMemory(request.memory);
        link.Send(ScanFrameKind::kBegun);
        ScanOne(ReadRequest(*line), link);
        if (!traces.IsClean())
            link.Send(ScanFrameKind::kUnfit);
        link.Send(ScanFrameKind::kDone);
        if (PluginModule::IsSystemLoaderBlocked())
            break;
    }
    // What modules have left to be done at the end of the process stays undone.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace vynhost
