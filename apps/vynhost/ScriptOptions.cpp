#include "vynhost/ScriptOptions.h"

#include "vynhost/CommandError.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string_view>

namespace vynhost {

namespace {

// A range of the command line's own lets numbers pass that are none.
double CheckTimeout(double seconds) {
    constexpr double kMostSeconds = 86400.0;
    if (seconds >= 0.0 && seconds <= kMostSeconds)
        return seconds;
    throw CommandError::WrongUsage("--timeout: goes from 0 to 86400 seconds");
}

} // namespace

void DeclareScript(CLI::App& app, ScriptRequest& request) {
    CLI::App& script =
        *app.add_subcommand("script", "Run a script that works with a plug-in; [-- ARGS] at the end are for it");
    CLI::Option* const file = script.add_option("FILE", request.path, "Script to run; what stands behind -- is for it");
    script.add_option("PLUGIN", request.plugin,
                      "Plug-in that is open when it begins: its unique ID, its name, or the path of its module");
    script.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    script
        .add_option_function<double>(
            "--timeout", [&](double seconds) { request.timeoutSeconds = CheckTimeout(seconds); },
            "Ends the script after so many seconds; 0, or nothing said: never")
        ->type_name("SECONDS");
    script.add_option("--memory", request.memoryMiB, "What the script may hold at a time")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str()
        ->type_name("MIB");
    CLI::Option* const list = script.add_flag("--list", request.lists, "Tell what scripts can use, and run none");
    CLI::Option* const json = script.add_flag("--json", request.json, "Print the result as one JSON document");
    script.add_flag("--markdown", request.markdown, "Print the list as Markdown")->needs(list)->excludes(json);
    list->excludes(file);
    script.callback([file, list] {
        if (file->count() == 0 && list->count() == 0)
            throw CLI::RequiredError(file->get_name());
    });
}

std::span<char*> TakeOwnArguments(std::span<char*> all) {
    if (all.size() < 2 || all[1] != std::string_view("script"))
        return all;
    auto const end = std::ranges::find(all, std::string_view("--"), [](char* text) { return std::string_view(text); });
    return all.first(static_cast<std::size_t>(end - all.begin()));
}

} // namespace vynhost
