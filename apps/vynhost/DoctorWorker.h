#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vynhost {

/// What the child of an examination is started with.
struct DoctorWorkerRequest {
    std::size_t memory = 0; ///< in bytes, that plug-ins may take; 0 for as much as there is
};

/// What a child is asked to examine.
struct DoctorTask {
    std::string path;                    ///< of the module
    std::string classID = {};            ///< empty for the module's first
    std::vector<std::string> steps = {}; ///< in between those that every child goes through
};

/// The name of the command that runs the child.
inline constexpr char const* kDoctorWorkerCommand = "doctor-worker";

/// The task as a line of the child's standard input.
/// [any-thread]
nlohmann::ordered_json ToJSON(DoctorTask const& task);

/// The child of an examination: takes a task from its standard input, goes through the plug-in's steps, and answers on
/// standard output in ScanFrames, which mean here: kBegun, the module's own code runs, and has the whole timeout from
/// here on; kFilter, the ID of each class of the module, when the task names none; kFiled, there is a plug-in of that
/// name; kProgress, a step begins; kNote, the step's DoctorStep as JSON; kDone, the plug-in is gone. It returns when
/// all is done, so that the process ends like any other's.
/// [main-thread]
void RunDoctorWorker(DoctorWorkerRequest const& request);

} // namespace vynhost
