#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

// What the benchmark programs share: the console output as usual, with every aggregate of the
// repetitions kept so that a program can end with its one-line summary, and the statistic "min"
// of a benchmark's fastest repetition (on a machine shared with other work, that work only ever
// adds time, to either side of a comparison).

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

class SummaryReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate)
                aggregates.push_back(run);
        ConsoleReporter::ReportRuns(runs);
    }

    // The aggregate `statistic` ("min", "median") of the benchmark of `function` with the
    // arguments `arguments` ("512"; "" for none); null when it did not run, as in a filtered run.
    const Run* find(const std::string& function, const std::string& statistic,
                    const std::string& arguments = "") const
    {
        for (const Run& run : aggregates)
            if (run.run_name.function_name == function && run.aggregate_name == statistic
                && run.run_name.args == arguments)
                return &run;
        return nullptr;
    }

    // Its processor time, or its real time, in the benchmark's unit; 0 when it did not run.
    double cpuTime(const std::string& function, const std::string& statistic, const std::string& arguments = "") const
    {
        const Run* run = find(function, statistic, arguments);
        return run != nullptr ? run->GetAdjustedCPUTime() : 0.0;
    }
    double realTime(const std::string& function, const std::string& statistic, const std::string& arguments = "") const
    {
        const Run* run = find(function, statistic, arguments);
        return run != nullptr ? run->GetAdjustedRealTime() : 0.0;
    }

private:
    std::vector<Run> aggregates;
};
