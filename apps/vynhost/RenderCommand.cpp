#include "vynhost/RenderCommand.h"

#include "vynhost/AutomationFile.h"
#include "vynhost/CommandError.h"
#include "vynhost/MidiFile.h"
#include "vynhost/OutputPaths.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/RenderPass.h"
#include "vynhost/RenderReport.h"
#include "vynhost/Session.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include "os/FileRemovalOnSignals.h"
#include "os/ReplacementFile.h"

#include <optional>
#include <stdexcept>

namespace vynhost {

namespace {

// Better told before the work than behind it.
void CheckWritable(std::string const& path) {
    try {
        std::optional<os::FileRemovalOnSignals> removal;
        os::ReplacementFile const trial(path, [&](std::string const& temporary) { removal.emplace(temporary); });
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(path, error.what());
    }
}

RenderScore ReadScore(RenderRequest const& request) {
    RenderScore score;
    if (request.midiPath)
        score.song = ReadMidiFile(*request.midiPath);
    if (request.automationPath)
        score.automation = AutomationFile(*request.automationPath);
    return score;
}

std::string DescribeLatency(int compensated, int afterwards) {
    if (compensated == afterwards)
        return "the plug-in told its latency of " + std::to_string(compensated) +
               " samples only while it worked: rendered a second time";
    return "the plug-in's latency changes while it works (" + std::to_string(compensated) + ", then " +
           std::to_string(afterwards) + " samples): the first is compensated";
}

RenderReport Render(RenderRequest const& request, RenderScore const& score) {
    std::string const& module = request.modulePath;
    auto const refusing = ExitStatus::kPluginRefused;
    PluginSelection const plugin =
        CallPlugin(refusing, module, [&] { return PluginSelection(module, request.classID); });

    std::optional<RenderPass> pass;
    auto const run = [&](std::optional<int> latency) {
        // Only one output file may be in the making at a time.
        pass.reset();
        CallPlugin(refusing, module, [&] { pass.emplace(request, score, plugin.CreateFilter(), latency); });
        return CallPlugin(ExitStatus::kWorkFailed, module, [&] { return pass->Run(); });
    };
    std::optional<std::string> note;
    RenderOutcome outcome = run(std::nullopt);
    if (outcome.latency != outcome.latencyAfterwards || outcome.lateness != 0) {
        outcome = run(outcome.latencyAfterwards);
        note = DescribeLatency(outcome.latency, outcome.latencyAfterwards);
    }
    RenderReport report = pass->Finish();
    if (note)
        report.notes.push_back(*note);
    if (request.midiPath && score.song.messages.empty())
        report.notes.emplace_back("the MIDI file holds no messages");
    return report;
}

} // namespace

std::string RunRender(RenderRequest const& request) {
    CheckOutputPaths(request);
    // A bad file shows before any plug-in is loaded.
    RenderScore const score = ReadScore(request);
    static_cast<void>(RenderSource(request, score.song));
    if (request.saveStatePath)
        CheckWritable(*request.saveStatePath);
    Session const session;
    RenderReport const report = Render(request, score);
    return request.json ? FormatJSON(report) : FormatTable(report);
}

} // namespace vynhost
