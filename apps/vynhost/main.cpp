// The command line of vynhost: what is asked, and nothing of how it is done.

#include "vynhost/CommandError.h"
#include "vynhost/InfoCommand.h"
#include "vynhost/Outcome.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/TrackLayout.h"

#include "os/Console.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace {

using vynhost::CommandError;
using vynhost::ExitStatus;

void DeclareRender(CLI::App& app, vynhost::RenderRequest& request) {
    CLI::App& render = *app.add_subcommand("render", "Send an audio file through a plug-in, into a WAV file");
    render.add_option("MODULE", request.modulePath, "Plug-in module: a module file or a bundle's folder")->required();
    render.add_option("-i,--input", request.inputPath, "Audio file to read")->required()->type_name("IN.wav");
    render.add_option("-o,--output", request.outputPath, "WAV file to write")->required()->type_name("OUT.wav");
    render.add_option("--sidechain", request.sideChainPath, "Audio file for the plug-in's side-chain input")
        ->type_name("FILE.wav");
    render
        .add_option_function<std::string>(
            "--layout", [&](std::string const& name) { request.layout = vynhost::LayoutOfName(name); },
            "Layout of the track that the plug-in sits on: " + vynhost::ListLayoutNames())
        ->type_name("NAME");
    render
        .add_option_function<std::string>(
            "--map", [&](std::string const& text) { request.channels = vynhost::ParseChannelChoice(text); },
            "The track's channel for each channel of the plug-in, counted from 0; - for none")
        ->type_name("in:0,1/out:0,1");
    render.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    render.add_option("--block-size", request.blockSize, "Samples per block")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    render.add_flag("--json", request.json, "Print the result as one JSON document");
}

void DeclareInfo(CLI::App& app, vynhost::InfoRequest& request) {
    CLI::App& info = *app.add_subcommand("info", "Tell what is known of a plug-in");
    info.add_option("MODULE", request.modulePath, "Plug-in module: a module file or a bundle's folder")->required();
    info.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    info.add_flag("--json", request.json, "Print the facts as one JSON document");
}

// A command line that can't be understood still tells in which form its error is wanted.
bool WantsJSON(std::span<char*> arguments) {
    return std::ranges::any_of(arguments, [](std::string_view argument) { return argument == "--json"; });
}

// Asking for help or for the version ends parsing too; everything else that ends it is wrong usage.
std::string ParseOrPrint(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const&) {
        return app.help();
    } catch (CLI::CallForAllHelp const&) {
        return app.help("", CLI::AppFormatMode::All);
    } catch (CLI::CallForVersion const&) {
        return app.version() + "\n";
    } catch (CLI::ParseError const& error) {
        throw CommandError::WrongUsage(std::string(error.what()) + " (see vynhost --help)");
    }
    return {};
}

std::string Run(int argc, char** argv) {
    CLI::App app("Hosts audio plug-ins on the command line.", "vynhost");
    app.set_version_flag("--version", "vynhost " VYNHOST_VERSION);
    app.require_subcommand(1);
    vynhost::RenderRequest render;
    DeclareRender(app, render);
    vynhost::InfoRequest info;
    DeclareInfo(app, info);
    std::string const text = ParseOrPrint(app, argc, argv);
    if (!text.empty())
        return text;
    return app.got_subcommand("info") ? vynhost::RunInfo(info) : vynhost::RunRender(render);
}

} // namespace

int main(int argc, char** argv) {
    os::PrepareConsole();
    bool const json = WantsJSON(std::span(argv, static_cast<std::size_t>(argc)));
    return static_cast<int>(vynhost::RunCommand(json, [&] { return Run(argc, argv); }));
}
