#include "vynhost/DoctorOptions.h"

#include <CLI/CLI.hpp>

namespace vynhost {

void DeclareDoctor(CLI::App& app, DoctorRequests& requests) {
    DoctorRequest& request = requests.doctor;
    CLI::App& doctor = *app.add_subcommand("doctor", "Examine plug-ins, and tell which misbehave and how");
    doctor.add_option(
        "PLUGIN", request.plugins,
        "Plug-ins: IDs, names, paths of modules, or folders to search; all that a scan finds when none is "
        "named");
    doctor.add_option("--jobs", request.jobs, "Plug-ins to examine at a time; as a rule one for each processor")
        ->type_name("N")
        ->check(CLI::Range(1, 256));
    doctor
        .add_option("--timeout", request.timeout,
                    "Seconds that a step of an examination may take, an editor each time that it is called")
        ->type_name("S")
        ->check(CLI::Range(0.01, 86400.0))
        ->capture_default_str();
    doctor
        .add_option("--memory", request.memory, "MiB that a plug-in may take; as a rule half of the machine's memory")
        ->type_name("N")
        ->check(CLI::Range(1, 1 << 30));
    doctor.add_flag("--json", request.json, "Print the result as one JSON document");
    // What the program starts itself for; not shown to anybody.
    app.add_subcommand(kDoctorWorkerCommand)->group("")->add_option("--memory", requests.worker.memory);
}

std::optional<std::string> RunDoctorIfAsked(CLI::App const& app, DoctorRequests const& requests) {
    if (app.got_subcommand("doctor"))
        return RunDoctor(requests.doctor);
    if (!app.got_subcommand(kDoctorWorkerCommand))
        return std::nullopt;
    RunDoctorWorker(requests.worker);
    return std::string();
}

} // namespace vynhost
