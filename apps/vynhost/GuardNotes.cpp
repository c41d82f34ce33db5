#include "vynhost/GuardNotes.h"

namespace vynhost {

namespace {

std::string CountBlocks(std::int64_t count) {
    return count == 1 ? "1 block" : std::to_string(count) + " blocks";
}

} // namespace

std::vector<std::string> DescribeGuard(vynguard::OutputGuard::Report const& report) {
    std::vector<std::string> notes;
    if (report.silenced > 0)
        notes.push_back(CountBlocks(report.silenced) +
                        " with sound that is no number or beyond +60 dB silenced (--no-guard keeps them)");
    if (report.modeRestored > 0)
        notes.push_back("the plug-in left the processor's floating-point mode changed in " +
                        CountBlocks(report.modeRestored) + ": restored each time");
    return notes;
}

} // namespace vynhost
