// SPDX-License-Identifier: Apache-2.0
#include "ratios.h"

#include <cstdio>
#include <map>
#include <vector>

namespace {

constexpr int repetitions = 9;

/// Keeps the fastest repetition of each benchmark and prints them all at the end.
class RatioReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override
    {
        PrintBasicContext(&GetErrorStream(), context);
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations == 0)
                continue;
            const double seconds = run.real_accumulated_time / double(run.iterations);
            const auto [entry, isNew] = m_fastest.try_emplace(run.run_name.function_name, seconds);
            if (!isNew && seconds < entry->second)
                entry->second = seconds;
        }
    }

    void Finalize() override
    {
        for (const auto& [name, seconds] : m_fastest) {
            const auto ours = m_fastest.find(name.substr(0, name.find('/')) + "/ours");
            const double ratio = ours == m_fastest.end() ? 0 : seconds / ours->second;
            std::printf("%-44s %12.6f ms %8.2f x ours\n", name.c_str(), seconds * 1e3, ratio);
        }
    }

private:
    std::map<std::string, double> m_fastest;
};

} // namespace

void addBenchmark(const std::string& group, const std::string& peer,
                  const std::function<void(benchmark::State&)>& run)
{
    benchmark::RegisterBenchmark((group + '/' + peer).c_str(), run)
        ->Repetitions(repetitions)
        ->UseRealTime();
}

int runBenchmarks(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    char mixed[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, mixed);
    arguments.push_back(nullptr);
    int count = argc + 1;
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
