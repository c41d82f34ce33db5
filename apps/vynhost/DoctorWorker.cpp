#include "vynhost/DoctorWorker.h"

#include "guard/FloatingPointMode.h"
#include "vynhost/DoctorEditorStep.h"
#include "vynhost/DoctorInfoStep.h"
#include "vynhost/DoctorRenderStep.h"
#include "vynhost/DoctorReport.h"
#include "vynhost/DoctorStateStep.h"
#include "vynhost/JSONText.h"
#include "vynhost/ListText.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PluginLookup.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/ProcessTraces.h"
#include "vynhost/Session.h"
#include "vynhost/WorkerLink.h"
#include "vynhost/XErrors.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/threads/MainThreadCalls.h"

#include "os/Memory.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

namespace vynhost {

using vyncore::UString;
using vyncore::string::UTF16to8;
using vynguard::FloatingPointMode;

namespace {

using Clock = std::chrono::steady_clock;

DoctorTask ReadTask(std::string const& line) {
    auto const document = nlohmann::ordered_json::parse(line);
    return {.path = document.at("path"), .classID = document.at("class"), .steps = document.at("steps")};
}

/// One plug-in's way through its steps.
class Examination {
public:
    Examination(DoctorTask task, WorkerLink const& link, XErrors& errors)
        : mTask(std::move(task)), mLink(link), mErrors(errors) {}

    void Run() {
        // It is made when it is first asked for, and stays.
        static_cast<void>(vyncore::threads::GetCallQueueDescriptor());
        ProcessTraces const traces;
        mMode.Set();
        {
            Session const session;
            RunSteps();
            // What is left of the plug-in goes with its last user, below.
            mLink.Send(ScanFrameKind::kProgress, kTeardownStep);
            mStarted = Clock::now();
            mPlugin.reset();
        }
        DoctorStep step;
        if (std::vector<std::string> const left = traces.List(); !left.empty())
            step.Note("leaves behind " + ListTexts(left));
        Tell(std::move(step));
    }

private:
    void RunSteps() {
        RunStep(kScanStep, [this](DoctorStep& step) { Scan(step); });
        if (!mPlugin)
            return;
        for (std::string const& name : mTask.steps)
            RunStep(name, [&](DoctorStep& step) { Examine(name, step); });
    }

    // A plug-in that gives no sound has no speed.
    void ExamineSound(DoctorStep& step) {
        if (double const times = ExamineRendering(*mPlugin, step); times > 0.0)
            mTimesRealTime = times;
    }

    void Examine(std::string const& name, DoctorStep& step) {
        if (name == "info")
            ExamineInfo(*mPlugin, step);
        else if (name == "render")
            ExamineSound(step);
        else if (name == "state")
            ExamineState(*mPlugin, step);
        else if (name == "editor")
            ExamineEditor(*mPlugin, mErrors, step, [this] { mLink.Send(ScanFrameKind::kBegun); });
    }

    void RunStep(std::string const& name, std::function<void(DoctorStep&)> const& work) {
        mLink.Send(ScanFrameKind::kProgress, name);
        mStarted = Clock::now();
        DoctorStep step;
        try {
            CallPlugin(ExitStatus::kWorkFailed, mTask.path, [&] { work(step); });
        } catch (CommandError const& error) {
            step.Misbehave(error.what());
        }
        if (!(FloatingPointMode::Get() == mMode)) {
            step.Misbehave("leaves the processor's floating-point mode changed");
            mMode.Set();
        }
        Tell(std::move(step));
    }

    void Tell(DoctorStep step) {
        step.seconds = std::chrono::duration<double>(Clock::now() - mStarted).count();
        auto document = ToJSON(step);
        if (auto const times = std::exchange(mTimesRealTime, std::nullopt))
            document["timesRealTime"] = *times;
        mLink.Send(ScanFrameKind::kNote, ToLine(document));
    }

    void Scan(DoctorStep& step) {
        ListClasses(step);
        auto plugin = std::make_unique<PluginSelection>(FoundPlugin{mTask.path, mTask.classID});
        auto const filter = plugin->CreateFilter();
        mLink.Send(ScanFrameKind::kFiled, UTF16to8(filter->GetDisplayName()));
        if (filter->GetDisplayName().empty())
            step.Misbehave("the plug-in has no name");
        mPlugin = std::move(plugin);
    }

    // Others examine all but the first.
    void ListClasses(DoctorStep& step) {
        if (!mTask.classID.empty())
            return;
        UString reason;
        auto const module = vynaudiofilterhost::OpenPluginModule(vyncore::string::UTF8to16(mTask.path), reason);
        if (!module)
            throw std::runtime_error(UTF16to8(reason));
        std::vector<UString> ids;
        if (!module->GetPluginInfo(ids) || ids.empty()) {
            reason = module->GetRefusalReason();
            throw std::runtime_error(reason.empty() ? "holds no audio plug-in" : UTF16to8(reason));
        }
        std::set<UString> told;
        for (UString const& id : ids) {
            if (told.insert(id).second)
                mLink.Send(ScanFrameKind::kFilter, UTF16to8(id));
        }
        if (told.size() < ids.size())
            step.Misbehave("several of its plug-ins have one ID");
        mTask.classID = UTF16to8(ids.front());
    }

    // Many modules are built to treat denormals as nothing and say so when they are loaded: no harm is done.
    FloatingPointMode const mMode = FloatingPointMode::Get().MakeForAudio();
    DoctorTask mTask;
    WorkerLink const& mLink;
    XErrors& mErrors;
    std::unique_ptr<PluginSelection> mPlugin;
    Clock::time_point mStarted;
    std::optional<double> mTimesRealTime;
};

} // namespace

nlohmann::ordered_json ToJSON(DoctorTask const& task) {
    return {{"path", task.path}, {"class", task.classID}, {"steps", task.steps}};
}

void RunDoctorWorker(DoctorWorkerRequest const& request) {
    WorkerLink const link;
    std::optional<std::string> const line = link.Receive();
    if (!line)
        return;
    // The connections of some plug-ins last until the process ends; so does this.
    XErrors errors([] { std::fputs("the plug-in's connection with the display broke\n", stderr); });
    if (request.memory != 0)
        os::LimitOwnMemory(request.memory);
    link.Send(ScanFrameKind::kBegun);
    Examination(ReadTask(*line), link, errors).Run();
    link.Send(ScanFrameKind::kDone);
}

} // namespace vynhost
