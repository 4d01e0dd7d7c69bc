#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

// What the host benchmarks share: repetitions run interleaved in random order, each benchmark
// taken by its fastest repetition (on a machine shared with other work, that work only ever adds
// time), and the console output as usual with those fastest times kept for a summary line.

// The statistic "min" of a benchmark's repetitions: ComputeStatistics("min", fastest).
inline double fastest(const std::vector<double>& values)
{
    return *std::min_element(values.begin(), values.end());
}

// Google Benchmark's initialisation with the repetitions of all benchmarks interleaved at random;
// false when an argument is not Google Benchmark's.
inline bool initialiseInterleaved(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaving);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    return !benchmark::ReportUnrecognizedArguments(count, arguments.data());
}

class FastestRunReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "min")
                nanoseconds[run.run_name.function_name] = run.GetAdjustedCPUTime();
        ConsoleReporter::ReportRuns(runs);
    }

    // The fastest repetition of the benchmark `name` in nanoseconds, 0 when it did not run.
    double lookup(const std::string& name) const
    {
        const auto found = nanoseconds.find(name);
        return found == nanoseconds.end() ? 0.0 : found->second;
    }

private:
    std::map<std::string, double> nanoseconds;
};
