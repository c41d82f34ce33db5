#pragma once

#include "vynhost/DoctorCommand.h"
#include "vynhost/DoctorWorker.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace vynhost {

/// What the user asks of the command `doctor`, and what the program asks of itself for it.
struct DoctorRequests {
    DoctorRequest doctor;
    DoctorWorkerRequest worker;
};

/// Adds the command to the command line. Parsing fills the requests, which must outlive that.
/// [main-thread]
void DeclareDoctor(CLI::App& app, DoctorRequests& requests);

/// Runs the command if it was asked for, and returns the text to be printed; empty when it wasn't. Throws as RunDoctor
/// does.
/// [main-thread]
std::optional<std::string> RunDoctorIfAsked(CLI::App const& app, DoctorRequests const& requests);

} // namespace vynhost
