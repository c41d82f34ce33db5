#pragma once

#include <map>
#include <string>

namespace vynbench {

/// The median real time of each benchmark of a run, in nanoseconds per iteration.
class Medians {
public:
    /// Throws std::out_of_range for a benchmark that did not run.
    double operator[](std::string const& name) const { return mNanoseconds.at(name); }
    void Add(std::string const& name, double nanoseconds) { mNanoseconds[name] = nanoseconds; }
    bool Has(std::string const& name) const { return mNanoseconds.count(name) != 0; }

private:
    std::map<std::string, double> mNanoseconds;
};

/// Runs all registered benchmarks in random turns, so that what disturbs the machine disturbs all alike, and gives the
/// medians. Arguments are Google Benchmark's.
Medians RunInterleaved(int argc, char** argv);

/// Prints one line of a comparison: what is compared, the figure, the most that it may be, and whether it keeps to it.
/// Gives whether it does.
bool Report(std::string const& what, double figure, double limit, std::string const& unit);

} // namespace vynbench
