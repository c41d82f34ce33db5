#pragma once

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vynhost {

/// What one step of an examination has shown.
struct DoctorStep {
    enum class Verdict {
        kFine,
        kSkipped,    ///< there was nothing to be examined; a remark says why
        kMisbehaves, ///< a remark says how
    };

    Verdict verdict = Verdict::kFine;
    double seconds = 0.0;
    std::vector<std::string> remarks = {}; ///< for a person; may be there on a fine step, too

    /// [any-thread]
    void Skip(std::string reason);
    /// [any-thread]
    void Misbehave(std::string remark);
    /// [any-thread]
    void Note(std::string remark) { remarks.push_back(std::move(remark)); }
};

/// The steps of an examination by name, in their order. Each depends on the first alone.
inline constexpr char const* kDoctorSteps[] = {"scan", "info", "render", "state", "editor", "teardown"};
/// The steps that each child goes through, whatever it is asked for.
inline constexpr char const* kScanStep = kDoctorSteps[0];
inline constexpr char const* kTeardownStep = kDoctorSteps[5];

/// Those in between, in which a plug-in has been made.
/// [any-thread]
std::vector<std::string> ListDoctorSteps();

/// What is known of one plug-in after its examination; of a module that gives no plug-in, of the module.
struct DoctorRow {
    enum class Verdict {
        kFine,
        kMisbehaves,
        kFailed, ///< there was no plug-in to be had to examine
    };

    std::string path; ///< of the module
    std::string id = {};
    std::string name = {}; ///< of the plug-in; empty for one that failed
    std::string technology = {};
    bool wasMade = false;                         ///< whether there was a plug-in
    std::optional<double> timesRealTime = {};     ///< of the rendering
    std::map<std::string, DoctorStep> steps = {}; ///< those that were gone through

    /// [any-thread]
    Verdict GetVerdict() const;
};

struct DoctorReport {
    double seconds = 0.0;
    bool interrupted = false;
    std::vector<std::string> passedOver = {}; ///< paths of banned modules, which were left alone
    std::vector<DoctorRow> rows = {};

    /// Whether every plug-in was examined, and is fine.
    /// [any-thread]
    bool IsFine() const;
};

/// A step as it is told by a child, and stands in the document.
/// [any-thread]
nlohmann::ordered_json ToJSON(DoctorStep const& step);

/// Takes in a step that a child tells. False when it is none.
/// [any-thread]
bool ReadStep(nlohmann::ordered_json const& document, DoctorStep& step);

/// One JSON document, with a line break behind it.
/// [any-thread]
std::string FormatJSON(DoctorReport const& report);

/// A table for a person.
/// [any-thread]
std::string FormatTable(DoctorReport const& report);

} // namespace vynhost
