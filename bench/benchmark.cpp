// SPDX-License-Identifier: Apache-2.0
#include "benchmark.h"

#include "peers.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <stdexcept>

namespace Bench {
namespace {

constexpr double shortestSample =
    2e-3; // seconds, so that clock resolution and cold caches do not dominate

struct Times
{
    std::vector<double> samples; // seconds per call
    int calls = 0;               // per sample; 0 before the first

    double total() const { return std::accumulate(samples.begin(), samples.end(), 0.0) * calls; }
    double least() const { return *std::min_element(samples.begin(), samples.end()); }
    double median() const
    {
        std::vector<double> sorted = samples;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

/// Evicts the data of the previous call from the caches, as the next photograph would.
void emptyCaches()
{
    static const std::vector<unsigned> memory(std::size_t(32) << 20, 1); // larger than the caches
    const unsigned sum = std::accumulate(memory.begin(), memory.end(), 0U);
    keep(&memory[sum % memory.size()]);
}

double secondsPerCall(const std::function<void()>& call, int calls)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        call();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count() / calls;
}

double checkedDifference(const Implementation& implementation, const std::string& title)
{
    if (!implementation.difference)
        return 0;
    const double difference = implementation.difference();
    if (!(difference <= implementation.tolerance))
        throw std::runtime_error(title + ": " + implementation.name +
                                 " gave a wrong result: differs by " + std::to_string(difference) +
                                 ", allowed " + std::to_string(implementation.tolerance));
    return difference;
}

void takeSample(const std::function<void()>& call, bool isSmall, Times& times)
{
    if (times.calls == 0) {
        const double once = isSmall ? shortestSample : secondsPerCall(call, 1);
        times.calls = int(std::ceil(shortestSample / std::max(once, 1e-7)));
        if (once > shortestSample) {
            times.samples.push_back(once);
            return;
        }
    }
    times.samples.push_back(secondsPerCall(call, times.calls));
}

void takeTurn(const Implementation& implementation, const Options& options, Times& times)
{
    const double before = times.total();
    for (int i = 0; i < options.callsInARow; ++i) {
        emptyCaches();
        takeSample(implementation.call, options.isSmall, times);
        if (times.total() - before >= options.secondsEach / options.turns)
            return;
    }
}

std::vector<Times> timesOf(const std::vector<Implementation>& implementations,
                           const Options& options)
{
    const std::size_t count = implementations.size();
    std::vector<Times> times(count);
    for (std::size_t turn = 0; turn < std::size_t(options.turns); ++turn) {
        for (std::size_t place = 0; place < count; ++place) {
            // The order changes each round, so that no implementation always runs after the same
            // one.
            const std::size_t i = (turn + (turn % 2 ? count - place : place)) % count;
            if (times[i].samples.size() < 2 || times[i].total() < options.secondsEach)
                takeTurn(implementations[i], options, times[i]);
        }
    }
    return times;
}

const char* nameOf(Role role)
{
    switch (role) {
    case Role::Ours:
        return "ours";
    case Role::Scalar:
        return "scalar";
    case Role::Peer:
        return "peer";
    case Role::Yardstick:
        break;
    }
    return "yardstick";
}

std::string differenceText(const Implementation& implementation, double difference)
{
    if (!implementation.difference)
        return "(other work)";
    char text[64];
    std::snprintf(text, sizeof text, "differs by %.1e, allowed %.0e", difference,
                  implementation.tolerance);
    return difference == 0 && implementation.tolerance == 0 ? "the same" : text;
}

} // namespace

Options Options::onOneThread() const
{
    Options options = *this;
    options.threads = {1};
    return options;
}

Options Options::forSize(const PictureSize& size) const
{
    return &size == &sizes.front() ? *this : onOneThread();
}

void keep(const void* result)
{
    [[maybe_unused]] static const void* volatile kept = nullptr;
    kept = result;
}

void Benchmark::run(const Options& options) const
{
    std::ofstream data;
    if (!options.dataPath.empty())
        data.open(options.dataPath, std::ios::app);
    for (const int threads : options.threads) {
        Peers::useThreads(threads);
        const std::string title = m_workload + ", " + m_size + ", " + std::to_string(threads) +
                                  (threads == 1 ? " thread, " : " threads, ") + options.memory;
        std::vector<double> differences;
        for (const Implementation& implementation : m_implementations)
            differences.push_back(checkedDifference(implementation, title));
        const std::vector<Times> times = timesOf(m_implementations, options);

        std::printf("%s\n", title.c_str());
        for (std::size_t i = 0; i < m_implementations.size(); ++i) {
            const Implementation& implementation = m_implementations[i];
            std::printf("  %-34s %11.4f ms, median %11.4f %9.3g x ours  %s\n",
                        implementation.name.c_str(), times[i].least() * 1e3,
                        times[i].median() * 1e3, times[i].least() / times[0].least(),
                        differenceText(implementation, differences[i]).c_str());
            data << m_workload << '\t' << m_size << '\t' << threads << '\t' << options.memory
                 << '\t' << implementation.name << '\t' << nameOf(implementation.role) << '\t'
                 << differences[i] << '\t' << implementation.tolerance << '\t'
                 << times[i].samples.size() << '\t' << times[i].least() << '\t' << times[i].median()
                 << '\n';
        }
        std::fflush(stdout);
    }
}

} // namespace Bench
