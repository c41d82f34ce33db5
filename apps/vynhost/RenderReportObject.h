#pragma once

#include "vynhost/RenderReport.h"

#include "vynscripting/ScriptObject.h"

#include <vector>

namespace vynhost {

/// The facts of a finished rendering, as scripts see them, read-only.
class RenderReportObject : public vynscripting::ScriptObject {
public:
    RenderReportObject();

    /// Adds the items to the definition that is being built.
    /// [main-thread]
    static void DefineObject();

    /// [any-thread]
    static char const* GetClassname() noexcept { return "RenderReport"; }
    static char const* GetDescription() noexcept {
        return "What became of a rendering. Levels are linear, over all channels; full scale is 1.";
    }

    /// @param report  of a rendering with an input
    /// [main-thread]
    void Initialize(RenderReport report);

private:
    double GetSamples() const;
    double GetSeconds() const;
    int GetChannels() const;
    double GetPeakIn() const;
    double GetRMSIn() const;
    double GetPeakOut() const;
    double GetRMSOut() const;
    int GetLatency() const;
    double GetTimesRealTime() const;
    std::vector<vyncore::UString> GetNotes() const;

    RenderReport mReport;
};

} // namespace vynhost
