#include "vynhost/RenderOptions.h"

#include "vynhost/CommandError.h"
#include "vynhost/TrackLayout.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace {

using vynhost::RenderRequest;

// A range of the command line's own lets numbers pass that are none.
double CheckTail(double seconds) {
    constexpr double kMostSeconds = 3600.0;
    if (seconds >= 0.0 && seconds <= kMostSeconds)
        return seconds;
    throw vynhost::CommandError::WrongUsage("--tail: goes from 0 to 3600 seconds");
}

void DeclareSource(CLI::App& render, RenderRequest& request) {
    CLI::Option* const input =
        render.add_option("-i,--input", request.inputPath, "Audio file to read; an instrument needs none")
            ->type_name("IN.wav");
    CLI::Option* const midi =
        render.add_option("--midi", request.midiPath, "MIDI file that the instrument plays")->type_name("FILE.mid");
    render.add_option("--rate", request.sampleRate, "Sample rate in hertz of a rendering without -i")
        ->check(CLI::Range(1000, 768000))
        ->excludes(input)
        ->capture_default_str()
        ->type_name("HZ");
    render.callback([input, midi] {
        if (input->count() == 0 && midi->count() == 0)
            throw CLI::RequiredError(input->get_name());
    });
}

void DeclareTrack(CLI::App& render, RenderRequest& request) {
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
}

void DeclareValues(CLI::App& render, RenderRequest& request) {
    render.add_option("--state", request.statePath, "State that the plug-in starts with")->type_name("FILE");
    render.add_option("--preset", request.preset, "Preset of the plug-in's own, by name or index (vynhost presets)")
        ->type_name("NAME");
    render
        .add_option_function<std::vector<std::string>>(
            "--set",
            [&](std::vector<std::string> const& texts) {
                for (std::string const& text : texts)
                    request.settings.push_back(vynhost::ParseParameterSetting(text));
            },
            "Value of a parameter, by its name or index (vynhost params), such as Gain=-6, Mix=50% or Mode=Hall; may "
            "be given several times")
        ->allow_extra_args(false)
        ->type_name("NAME=VALUE");
    render
        .add_option("--automate", request.automationPath,
                    "Values over time: lines of seconds,parameter,value, or the same as a JSON array")
        ->type_name("FILE");
    render
        .add_option("--save-state", request.saveStatePath,
                    "File for the plug-in's state with preset and values, as --state takes it")
        ->type_name("FILE");
}

} // namespace

void DeclareRender(CLI::App& app, RenderRequest& request) {
    CLI::App& render =
        *app.add_subcommand("render", "Send audio through a plug-in, or MIDI into an instrument, into a WAV file");
    render.add_option("PLUGIN", request.modulePath, "Plug-in: its unique ID, its name, or the path of its module")
        ->required();
    DeclareSource(render, request);
    render.add_option("-o,--output", request.outputPath, "WAV file to write")->required()->type_name("OUT.wav");
    DeclareTrack(render, request);
    DeclareValues(render, request);
    render.add_option("--class", request.classID, "Which plug-in, when the module holds several")->type_name("ID");
    render.add_option("--block-size", request.blockSize, "Samples per block")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    render
        .add_option_function<double>(
            "--tail", [&](double seconds) { request.tailSeconds = CheckTail(seconds); },
            "Seconds to render behind the end, in place of what the plug-in says of its tail")
        ->type_name("SECONDS");
    render.add_flag_callback(
        "--no-guard", [&] { request.guarded = false; },
        "Keep blocks with sound that is no number or beyond +60 dB, which are silenced otherwise");
    render.add_flag("--json", request.json, "Print the result as one JSON document");
}
