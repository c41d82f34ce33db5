#include "vynhost/EditOptions.h"

#include "vynhost/CommandError.h"

#include <CLI/CLI.hpp>

#include <string>

namespace {

// A range of the command line's own lets numbers pass that are none.
double CheckDelay(double seconds) {
    constexpr double kMostSeconds = 3600.0;
    if (seconds >= 0.0 && seconds <= kMostSeconds)
        return seconds;
    throw vynhost::CommandError::WrongUsage("--after: goes from 0 to 3600 seconds");
}

} // namespace

void DeclareEdit(CLI::App& app, vynhost::EditRequest& request) {
    CLI::App& edit = *app.add_subcommand("edit", "Open a plug-in's own window, and tell what is edited in it");
    edit.add_option("PLUGIN", request.modulePath, "Plug-in: its unique ID, its name, or the path of its module")
        ->required();
    edit.add_option("--play", request.playPath, "Audio or MIDI file to play through the plug-in meanwhile, over JACK")
        ->type_name("FILE");
    edit.add_flag_callback(
        "--no-guard", [&] { request.guarded = false; },
        "Play blocks with sound that is no number or beyond +60 dB, which are silenced otherwise");
    edit.add_option("--state", request.statePath, "State that the plug-in starts with")->type_name("FILE");
    edit.add_option("--save-state", request.saveStatePath, "File for the state that it ends with, as --state takes it")
        ->type_name("FILE");
    CLI::Option* const screenshot =
        edit.add_option("--screenshot", request.screenshotPath, "Write a picture of the window, and end")
            ->type_name("FILE.png");
    edit.add_option_function<double>(
            "--after", [&](double seconds) { request.afterSeconds = CheckDelay(seconds); },
            "Seconds that the window is open before its picture is taken, 1 unless said otherwise")
        ->needs(screenshot)
        ->type_name("SECONDS");
    edit.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    edit.add_flag("--json", request.json, "Print one JSON document per line");
}
