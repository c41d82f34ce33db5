#include "vynhost/EditRescue.h"

#include "vynhost/EditedState.h"

#include "vyncore/threads/MainThreadCalls.h"

#include <chrono>
#include <cstdlib>
#include <exception>

namespace vynhost {

namespace {

constexpr std::chrono::seconds kPatience{5};
constexpr char const* kNotSaved = "; the plug-in's state could not be saved";

} // namespace

EditRescue::EditRescue(bool json) : mForm(json ? FailureForm::kJSONLine : FailureForm::kText) {}

void EditRescue::Leave() noexcept {
    if (std::this_thread::get_id() != mMainThread) {
        vyncore::threads::AsyncCallFromMainThread([] {}, 0);
        GiveUpLater();
    }
    if (mFinished)
        std::_Exit(static_cast<int>(ExitStatus::kSuccess));
    // The plug-in needs the display for its state as well.
    if (mLeaving.exchange(true))
        Report(kNotSaved);
    try {
        std::thread([this] { GiveUpLater(); }).detach();
    } catch (std::exception const&) { // without it the plug-in gets all the time that it takes
    }
    Report(Save());
}

std::string EditRescue::Save() {
    EditedState* const state = mState;
    if (!state)
        return {};
    try {
        state->Save();
        return "; the plug-in's state is saved";
    } catch (std::exception const& error) {
        return kNotSaved + std::string(": ") + error.what();
    } catch (...) {
        return kNotSaved;
    }
}

void EditRescue::GiveUpLater() noexcept {
    std::this_thread::sleep_for(kPatience);
    if (mFinished)
        std::_Exit(static_cast<int>(ExitStatus::kSuccess));
    Report(mState ? kNotSaved : "");
}

void EditRescue::Report(std::string const& state) noexcept {
    // Whoever comes second must not end the process amidst the report.
    if (mReported.exchange(true))
        std::this_thread::sleep_for(kPatience);
    ExitStatus const status = RunCommand(mForm, [&]() -> std::string {
        throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                           "the connection with the display is broken" + state);
    });
    std::_Exit(static_cast<int>(status));
}

} // namespace vynhost
