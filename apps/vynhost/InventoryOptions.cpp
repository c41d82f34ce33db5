#include "vynhost/InventoryOptions.h"

#include "vynhost/ListCommand.h"

#include <CLI/CLI.hpp>

namespace vynhost {

namespace {

constexpr char const* kJSONText = "Print the result as one JSON document";

void DeclareScan(CLI::App& app, ScanRequest& request) {
    CLI::App& scan = *app.add_subcommand("scan", "Find plug-ins, and take down what they are");
    scan.add_option("DIR", request.folders, "Folders to search, with all below them, in place of the usual ones");
    scan.add_flag("--all", request.all, "Open known modules too, that have not changed");
    scan.add_option("--jobs", request.jobs, "Modules to open at a time; as a rule one for each processor")
        ->type_name("N")
        ->check(CLI::Range(1, 256));
    scan.add_option("--timeout", request.timeout, "Seconds that a module may take before it is given up and banned")
        ->type_name("S")
        ->check(CLI::Range(0.01, 86400.0))
        ->capture_default_str();
    scan.add_option("--memory", request.memory, "MiB that a module may take; as a rule half of the machine's memory")
        ->type_name("N")
        ->check(CLI::Range(1, 1 << 30));
    scan.add_flag("--json", request.json, kJSONText);
}

template <class Request>
CLI::App& DeclareChange(CLI::App& command, char const* name, char const* description, Request& request,
                        typename Request::Action action) {
    CLI::App& change = *command.add_subcommand(name, description);
    change.add_flag("--json", request.json, kJSONText);
    change.parse_complete_callback([&request, action] { request.action = action; });
    return change;
}

void DeclareBan(CLI::App& app, BanRequest& request) {
    using Action = BanRequest::Action;
    CLI::App& ban = *app.add_subcommand("ban", "Tell the modules that are left alone; ban others");
    ban.require_subcommand(0, 1);
    ban.add_flag("--json", request.json, kJSONText);
    CLI::App& add = DeclareChange(ban, "add", "Leave modules alone from now on", request, Action::kAdd);
    add.add_option("MODULE", request.modules, "Module: its path, or the name or ID of a plug-in in it")->required();
    add.add_option("--reason", request.reason, "Why, to remember it by")->type_name("TEXT");
    DeclareChange(ban, "remove", "Allow modules again; the next scan opens them", request, Action::kRemove)
        .add_option("MODULE", request.modules, "Module: its path, as ban shows it")
        ->required();
}

void DeclareDirs(CLI::App& app, DirsRequest& request) {
    using Action = DirsRequest::Action;
    CLI::App& dirs = *app.add_subcommand("dirs", "Tell the folders that are searched for plug-ins; choose others");
    dirs.require_subcommand(0, 1);
    dirs.add_flag("--json", request.json, kJSONText);
    DeclareChange(dirs, "add", "Search further folders", request, Action::kAdd)
        .add_option("DIR", request.folders, "Folder")
        ->required();
    DeclareChange(dirs, "remove", "Search folders no more, and forget what is in them", request, Action::kRemove)
        .add_option("DIR", request.folders, "Folder")
        ->required();
    DeclareChange(dirs, "reset", "Search the usual folders", request, Action::kReset);
}

CLI::App& DeclareFolders(CLI::App& command, ConfigRequest& request) {
    command.add_option("FILE", request.file, "The configuration")->required();
    command.add_option("--vst3", request.vst3Folder, "Folder of the VST3 plug-ins")->type_name("DIR");
    command.add_option("--vst2", request.vst2Folder, "Folder of the VST 2.x plug-ins")->type_name("DIR");
    return command;
}

void DeclareConfig(CLI::App& app, ConfigRequest& request) {
    using Action = ConfigRequest::Action;
    CLI::App& config = *app.add_subcommand("config", "Tell the private plug-in configuration; build or choose one");
    config.require_subcommand(0, 1);
    config.add_flag("--json", request.json, kJSONText);
    CLI::App& build = DeclareChange(config, "build", "Make one from the plug-ins in folders", request, Action::kBuild);
    DeclareFolders(build, request)
        .add_option("--timeout", request.timeout, "Seconds that all this may take")
        ->type_name("S")
        ->check(CLI::Range(0.01, 86400.0))
        ->capture_default_str();
    DeclareFolders(DeclareChange(config, "use", "Take one into use", request, Action::kUse), request);
    DeclareChange(config, "clear", "Use none", request, Action::kClear);
}

// What the program starts itself for; not shown to anybody.
void DeclareChildren(CLI::App& app, InventoryRequests& requests) {
    CLI::App& worker = *app.add_subcommand(kScanWorkerCommand)->group("");
    worker.add_option("--memory", requests.worker.memory);
    DeclareFolders(*app.add_subcommand(kConfigBuilderCommand)->group(""), requests.config);
}

} // namespace

void DeclareInventory(CLI::App& app, InventoryRequests& requests) {
    DeclareScan(app, requests.scan);
    app.add_subcommand("list", "List the plug-ins that are known")->add_flag("--json", requests.listAsJSON, kJSONText);
    DeclareBan(app, requests.ban);
    DeclareDirs(app, requests.dirs);
    DeclareConfig(app, requests.config);
    DeclareChildren(app, requests);
}

std::optional<std::string> RunInventory(CLI::App const& app, InventoryRequests const& requests) {
    if (app.got_subcommand("scan"))
        return RunScan(requests.scan);
    if (app.got_subcommand("list"))
        return RunList(requests.listAsJSON);
    if (app.got_subcommand("ban"))
        return RunBan(requests.ban);
    if (app.got_subcommand("dirs"))
        return RunDirs(requests.dirs);
    if (app.got_subcommand("config"))
        return RunConfig(requests.config);
    if (app.got_subcommand(kScanWorkerCommand))
        RunScanWorker(requests.worker);
    if (!app.got_subcommand(kConfigBuilderCommand))
        return std::nullopt;
    RunConfigBuilder(requests.config);
    return std::string();
}

} // namespace vynhost
