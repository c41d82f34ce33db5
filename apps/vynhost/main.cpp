// The command line of vynhost: what is asked, and nothing of how it is done.

#include "vynhost/CommandError.h"
#include "vynhost/DoctorOptions.h"
#include "vynhost/EditOptions.h"
#include "vynhost/InfoCommand.h"
#include "vynhost/InventoryOptions.h"
#include "vynhost/Outcome.h"
#include "vynhost/ParamsCommand.h"
#include "vynhost/PresetsCommand.h"
#include "vynhost/RenderOptions.h"
#include "vynhost/ScriptOptions.h"

#include "os/Console.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

namespace {

using vynhost::CommandError;
using vynhost::FailureForm;
using vynhost::PluginRequest;

// A command that tells something of a plug-in, and the text that it gives.
struct Query {
    char const* name;
    char const* description;
    std::string (*run)(PluginRequest const&);
};

constexpr std::array kQueries{
    Query{"info", "Tell what is known of a plug-in", vynhost::RunInfo},
    Query{"params", "List the parameters of a plug-in", vynhost::RunParams},
    Query{"presets", "List the presets that a plug-in brings along", vynhost::RunPresets},
};

void DeclareQuery(CLI::App& app, Query const& query, PluginRequest& request) {
    CLI::App& command = *app.add_subcommand(query.name, query.description);
    command.add_option("PLUGIN", request.modulePath, "Plug-in: its unique ID, its name, or the path of its module")
        ->required();
    command.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    command.add_flag("--json", request.json, "Print the result as one JSON document");
}

// A command line that can't be understood still tells in which form its error is wanted.
FailureForm FindFailureForm(std::span<char*> arguments) {
    auto const isGiven = [&](std::string_view sought) {
        return std::ranges::any_of(arguments, [&](std::string_view argument) { return argument == sought; });
    };
    if (!isGiven("--json"))
        return FailureForm::kText;
    bool const edits = arguments.size() > 1 && arguments[1] == std::string_view("edit");
    return edits ? FailureForm::kJSONLine : FailureForm::kJSONDocument;
}

// Asking for help or for the version ends parsing too; everything else that ends it is wrong usage.
std::string ParseOrPrint(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const&) {
        return app.help();
    } catch (CLI::CallForVersion const&) {
        return app.version() + "\n";
    } catch (CLI::ParseError const& error) {
        throw CommandError::WrongUsage(std::string(error.what()) + " (see vynhost --help)");
    }
    return {};
}

std::string Run(std::span<char*> arguments) {
    CLI::App app("Hosts audio plug-ins on the command line.", "vynhost");
    app.set_version_flag("--version", "vynhost " VYNHOST_VERSION);
    app.require_subcommand(1);
    vynhost::RenderRequest render;
    DeclareRender(app, render);
    vynhost::EditRequest edit;
    DeclareEdit(app, edit);
    vynhost::InventoryRequests inventory;
    DeclareInventory(app, inventory);
    vynhost::DoctorRequests doctor;
    DeclareDoctor(app, doctor);
    std::span<char*> const own = vynhost::TakeOwnArguments(arguments);
    vynhost::ScriptRequest script;
    for (char const* const argument : arguments.subspan(std::min(own.size() + 1, arguments.size())))
        script.arguments.emplace_back(argument);
    DeclareScript(app, script);
    PluginRequest asked;
    for (Query const& query : kQueries)
        DeclareQuery(app, query, asked);
    std::string text = ParseOrPrint(app, static_cast<int>(own.size()), own.data());
    if (!text.empty())
        return text;
    for (Query const& query : kQueries) {
        if (app.got_subcommand(query.name))
            return query.run(asked);
    }
    if (app.got_subcommand("edit"))
        return vynhost::RunEdit(edit);
    if (app.got_subcommand("script"))
        return vynhost::RunScript(script);
    if (auto const printed = RunInventory(app, inventory))
        return *printed;
    if (auto const printed = RunDoctorIfAsked(app, doctor))
        return *printed;
    return vynhost::RunRender(render);
}

} // namespace

int main(int argc, char** argv) {
    os::PrepareConsole();
    std::span<char*> const arguments(argv, static_cast<std::size_t>(argc));
    FailureForm const form = FindFailureForm(vynhost::TakeOwnArguments(arguments));
    return static_cast<int>(vynhost::RunCommand(form, [&] { return Run(arguments); }));
}
