#include "vynhost/ScriptHost.h"

#include "vynhost/CommandError.h"
#include "vynhost/MainBuses.h"
#include "vynhost/OutputPaths.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginFacts.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/RenderPass.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/Track.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <exception>
#include <stdexcept>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

constexpr int kBlockSize = 512;

// A name that the system would cut short is that of another file.
void CheckName(std::string const& name) {
    if (name.find('\0') != std::string::npos)
        throw CommandError::OfFile(name, "no file has a NUL in its name");
}

std::vector<float> ReadValues(AudioFilter const& filter) {
    std::vector<float> values;
    int const count = filter.GetParameterCount();
    for (int index = 0; index < count; ++index)
        values.push_back(filter.GetParameter(index));
    return values;
}

// As many channels as the plug-in has on its wider side, for a script to change before there is a file.
void ConnectFirst(AudioFilter& filter) {
    BusSpan const input = FindMainInput(filter);
    BusSpan const output = FindMainOutput(filter);
    if (output.channels <= 0)
        return;
    auto const& wider = input.channels > output.channels
                            ? filter.GetInputBuses()[static_cast<std::size_t>(input.bus)]
                            : filter.GetOutputBuses()[static_cast<std::size_t>(output.bus)];
    Track(filter, {.file = wider.GetLayout(), .basis = TrackBasis::kBuses});
}

} // namespace

ScriptHost::ScriptHost(std::string script, std::vector<std::string> arguments)
    : mScript(std::move(script)), mArguments(std::move(arguments)) {}

ScriptHost::~ScriptHost() = default;

void ScriptHost::Open(std::string const& plugin, std::string const& classID) {
    CheckName(plugin);
    CallPlugin(ExitStatus::kPluginRefused, plugin, [&] {
        auto selection = std::make_unique<PluginSelection>(plugin, classID);
        auto filter = selection->CreateFilter();
        filter->SetSampleRate(kFactsSampleRate);
        filter->SetBlockSize(kBlockSize);
        ConnectFirst(*filter);
        std::vector<float> values = ReadValues(*filter);
        mFirst.emplace(*filter);
        Close();
        mPlugin = std::move(selection);
        mFilter = std::move(filter);
        mHeard = std::move(values);
    });
    mName = plugin;
    Session::RunDueCalls();
}

void ScriptHost::Close() {
    mFilter = nullptr;
    mPlugin = nullptr;
    Session::RunDueCalls();
}

RenderRequest ScriptHost::MakeRequest(std::string const& inputPath, std::string const& outputPath) {
    RenderRequest request{.modulePath = mName, .inputPath = inputPath, .outputPath = outputPath};
    FilterConnections const present(*mFilter);
    if (!present.HasMapsOf(*mFirst))
        request.basis = TrackBasis::kMaps;
    else if (!present.HasBusesOf(*mFirst))
        request.basis = TrackBasis::kBuses;
    request.settle = [this](AudioFilter& filter) { TellValues(filter); };
    return request;
}

// Some plug-ins look at new values while they run alone.
void ScriptHost::TellValues(AudioFilter& filter) {
    std::vector<float> const values = ReadValues(filter);
    mHeard.resize(values.size(), -1.0f);
    // What comes behind a change is told as well: setting a program changes the values of others.
    bool tells = false;
    for (std::size_t index = 0; index < values.size(); ++index) {
        tells = tells || values[index] != mHeard[index];
        auto const info = tells ? filter.GetParameterInfo(static_cast<int>(index)) : nullptr;
        if (tells && (!info || info->CanBeAutomated()))
            filter.SetParameter(static_cast<int>(index), values[index]);
    }
    mHeard = values;
}

RenderReport ScriptHost::Render(std::string const& inputPath, std::string const& outputPath) {
    if (!mFilter)
        throw std::runtime_error("no plug-in is open");
    CheckName(inputPath);
    CheckName(outputPath);
    RenderRequest const request = MakeRequest(inputPath, outputPath);
    CheckOutputPaths(request);
    CheckOutputPaths({.modulePath = {}, .inputPath = mScript, .outputPath = outputPath});
    FilterConnections const connections(*mFilter);
    RenderReport report;
    std::exception_ptr failure;
    try {
        report = RenderInStep(request);
    } catch (...) {
        failure = std::current_exception();
    }
    try {
        PutBack(connections);
    } catch (CommandError const&) {
        if (!failure)
            throw;
    }
    if (failure)
        std::rethrow_exception(failure);
    return report;
}

void ScriptHost::PutBack(FilterConnections const& connections) {
    CallPlugin(ExitStatus::kWorkFailed, mName, [&] {
        mFilter->SetSampleRate(kFactsSampleRate);
        mFilter->SetBlockSize(kBlockSize);
        connections.Restore(*mFilter);
    });
}

// A plug-in that tells its latency only while it works is rendered a second time, as a rendering by itself is.
RenderReport ScriptHost::RenderInStep(RenderRequest const& request) {
    RenderScore const score;
    std::optional<RenderPass> pass;
    auto const run = [&](std::optional<int> latency) {
        // Only one output file may be in the making at a time.
        pass.reset();
        return CallPlugin(ExitStatus::kWorkFailed, mName, [&] {
            pass.emplace(request, score, mFilter, latency);
            return pass->Run();
        });
    };
    RenderOutcome const outcome = run(std::nullopt);
    if (outcome.latency != outcome.latencyAfterwards || outcome.lateness != 0)
        run(outcome.latencyAfterwards);
    return pass->Finish();
}

KnownFilters const& ScriptHost::GetCatalogue() {
    if (!mCatalogue) {
        LoadStoredFiles();
        mCatalogue = ListKnownFilters();
    }
    return *mCatalogue;
}

} // namespace vynhost
