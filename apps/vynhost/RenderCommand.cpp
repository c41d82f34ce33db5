#include "vynhost/RenderCommand.h"

#include "vynhost/CommandError.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/RenderPass.h"
#include "vynhost/RenderReport.h"
#include "vynhost/Session.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

namespace vynhost {

namespace {

void CheckPaths(RenderRequest const& request) {
    for (std::string const& other : {request.inputPath, request.modulePath}) {
        std::error_code error;
        if (std::filesystem::equivalent(request.outputPath, other, error))
            throw CommandError(ExitStatus::kWrongUsage, CommandError::Subject::kFile, request.outputPath,
                               "is the input as well as the output");
    }
}

// Runs work in which plug-in code is called. Plug-ins throw what they like; that becomes a failure with this status.
template <class Work>
decltype(auto) CallPlugin(ExitStatus status, std::string const& modulePath, Work const& work) {
    auto const fail = [&](std::string text) {
        throw CommandError(status, CommandError::Subject::kPlugin, modulePath, std::move(text));
    };
    try {
        return work();
    } catch (CommandError const&) {
        throw;
    } catch (std::exception const& error) {
        fail(error.what());
    } catch (char const* text) {
        fail(text ? text : "threw an exception");
    } catch (...) {
        fail("threw an exception");
    }
    std::terminate();
}

std::string DescribeLatency(int compensated, int afterwards) {
    if (compensated == afterwards)
        return "the plug-in told its latency of " + std::to_string(compensated) +
               " samples only while it worked: rendered a second time";
    return "the plug-in's latency changes while it works (" + std::to_string(compensated) + ", then " +
           std::to_string(afterwards) + " samples): the first is compensated";
}

RenderReport Render(RenderRequest const& request) {
    std::string const& module = request.modulePath;
    auto const refusing = ExitStatus::kPluginRefused;
    PluginSelection const plugin =
        CallPlugin(refusing, module, [&] { return PluginSelection(module, request.classID); });

    std::optional<RenderPass> pass;
    auto const run = [&](std::optional<int> latency) {
        // Only one output file may be in the making at a time.
        pass.reset();
        CallPlugin(refusing, module, [&] { pass.emplace(request, plugin.CreateFilter(), latency); });
        return CallPlugin(ExitStatus::kWorkFailed, module, [&] { return pass->Run(); });
    };
    std::optional<std::string> note;
    RenderOutcome outcome = run(std::nullopt);
    if (outcome.latency != outcome.latencyAfterwards) {
        outcome = run(outcome.latencyAfterwards);
        note = DescribeLatency(outcome.latency, outcome.latencyAfterwards);
    }
    RenderReport report = pass->Finish();
    if (note)
        report.notes.push_back(*note);
    return report;
}

} // namespace

std::string RunRender(RenderRequest const& request) {
    CheckPaths(request);
    // A bad file shows before any plug-in is loaded.
    static_cast<void>(AudioFileReader(request.inputPath));
    Session const session;
    RenderReport const report = Render(request);
    return request.json ? FormatJSON(report) : FormatTable(report);
}

} // namespace vynhost
