#include "Comparison.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <vector>

namespace vynbench {

namespace {

class MedianCollector : public benchmark::ConsoleReporter {
public:
    explicit MedianCollector(Medians& medians) : ConsoleReporter(OO_Tabular), mMedians(medians) {}

    void ReportRuns(std::vector<Run> const& runs) override {
        for (Run const& run : runs) {
            if (run.aggregate_name == "median")
                mMedians.Add(run.run_name.function_name, run.GetAdjustedRealTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

private:
    Medians& mMedians;
};

} // namespace

Medians RunInterleaved(int argc, char** argv) {
    std::vector<std::string> defaults = {argv[0], "--benchmark_enable_random_interleaving=true",
                                         "--benchmark_repetitions=15", "--benchmark_min_time=0.05",
                                         "--benchmark_report_aggregates_only=true"};
    std::vector<char*> arguments;
    for (std::string& text : defaults)
        arguments.push_back(text.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    Medians medians;
    MedianCollector collector(medians);
    benchmark::RunSpecifiedBenchmarks(&collector);
    return medians;
}

bool Report(std::string const& what, double figure, double limit, std::string const& unit) {
    bool const kept = figure <= limit;
    std::printf("%-58s %10.2f %-5s (at most %.2f) %s\n", what.c_str(), figure, unit.c_str(), limit,
                kept ? "kept" : "MISSED");
    return kept;
}

} // namespace vynbench
