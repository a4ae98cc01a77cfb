// SPDX-License-Identifier: Apache-2.0
#include "contest.h"

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

constexpr double shortestSample = 2e-3; // seconds; the clock and the caches want that much

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

double secondsPerCall(const std::function<void()>& call, int calls)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        call();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count() / calls;
}

double checkedDifference(const Contestant& contestant, const std::string& title)
{
    if (!contestant.difference)
        return 0;
    const double difference = contestant.difference();
    if (!(difference <= contestant.tolerance))
        throw std::runtime_error(title + ": " + contestant.name + " did other work: differs by " +
                                 std::to_string(difference) + ", allowed " +
                                 std::to_string(contestant.tolerance));
    return difference;
}

bool hasTimeLeft(const Times& times, const Options& options)
{
    return times.samples.size() < 2 || times.total() < options.secondsEach;
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

std::vector<Times> timesOf(const std::vector<Contestant>& contestants, const Options& options)
{
    const std::size_t count = contestants.size();
    std::vector<Times> times(count);
    for (std::size_t round = 0; round < std::size_t(options.rounds); ++round) {
        for (std::size_t place = 0; place < count; ++place) {
            // Another order in each round: nobody always comes after the one that fills the cache.
            const std::size_t i = (round + (round % 2 ? count - place : place)) % count;
            if (hasTimeLeft(times[i], options))
                takeSample(contestants[i].call, options.isSmall, times[i]);
        }
    }
    return times;
}

const char* nameOf(Role role)
{
    switch (role) {
    case Role::Ours:
        return "ours";
    case Role::Plain:
        return "plain";
    case Role::Peer:
        return "peer";
    case Role::Yardstick:
        break;
    }
    return "yardstick";
}

std::string differenceText(const Contestant& contestant, double difference)
{
    if (!contestant.difference)
        return "(other work)";
    char text[64];
    std::snprintf(text, sizeof text, "differs by %.1e, allowed %.0e", difference,
                  contestant.tolerance);
    return difference == 0 && contestant.tolerance == 0 ? "the same" : text;
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

void Contest::run(const Options& options) const
{
    std::ofstream data;
    if (!options.dataPath.empty())
        data.open(options.dataPath, std::ios::app);
    for (const int threads : options.threads) {
        Peers::useThreads(threads);
        const std::string title = m_workload + ", " + m_size + ", " + std::to_string(threads) +
                                  (threads == 1 ? " thread, " : " threads, ") + options.memory;
        std::vector<double> differences;
        for (const Contestant& contestant : m_contestants)
            differences.push_back(checkedDifference(contestant, title));
        const std::vector<Times> times = timesOf(m_contestants, options);

        std::printf("%s\n", title.c_str());
        for (std::size_t i = 0; i < m_contestants.size(); ++i) {
            const Contestant& contestant = m_contestants[i];
            std::printf("  %-34s %11.4f ms, median %11.4f %9.3g x ours  %s\n",
                        contestant.name.c_str(), times[i].least() * 1e3, times[i].median() * 1e3,
                        times[i].least() / times[0].least(),
                        differenceText(contestant, differences[i]).c_str());
            data << m_workload << '\t' << m_size << '\t' << threads << '\t' << options.memory
                 << '\t' << contestant.name << '\t' << nameOf(contestant.role) << '\t'
                 << differences[i] << '\t' << contestant.tolerance << '\t'
                 << times[i].samples.size() << '\t' << times[i].least() << '\t' << times[i].median()
                 << '\n';
        }
        std::fflush(stdout);
    }
}

} // namespace Bench
