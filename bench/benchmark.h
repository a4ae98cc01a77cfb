// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Contests of operations that do the same work on the same data in one process.
namespace Bench {

struct PictureSize
{
    std::string name;
    int cols;
    int rows;
};

struct Options
{
    std::vector<PictureSize> sizes;
    std::vector<int> threads;
    std::string memory;   ///< What results lie in, in a word; the environment decides it.
    int turns = 3;        ///< Of each implementation at most …
    int callsInARow = 12; ///< … and calls in each of its turns: which memory a call gets depends
                          ///< on how long ago the last was.
    double secondsEach = 2; ///< How long the calls may take together, of which two are granted.
    std::string dataPath;   ///< Where the figures are appended; empty: nowhere.
    bool isSmall = false;   ///< Whether it is only shown that everything runs.

    /// The same with one thread only.
    Options onOneThread() const;
    /// The same for pictures of `size`: the larger ones get one thread only.
    Options forSize(const PictureSize& size) const;
};

enum class Role {
    Ours,
    Plain,    ///< The same work in the plainest form.
    Peer,     ///< Another library that does the same work.
    Yardstick ///< Something else that a reader knows the cost of, such as copying the data.
};

struct Implementation
{
    Role role;
    std::string name;
    std::function<void()> call;         ///< One call, the release of its result included.
    std::function<double()> difference; ///< How far a result is from the work; none: a yardstick.
    double tolerance;
};

/// Keeps the compiler from leaving out what nobody reads.
void keep(const void* result);

class Benchmark
{
public:
    Benchmark(std::string workload, std::string size)
        : m_workload(std::move(workload)), m_size(std::move(size))
    {}

    /// `operation` returns a result, of which `difference` says how far it is from the work; more
    /// than `tolerance` ends the program.
    template<typename Operation, typename Difference>
    void add(Role role, const std::string& name, const Operation& operation,
             const Difference& difference, double tolerance = 0)
    {
        m_implementations.push_back({role, name, callOf(operation),
                                     [=] { return double(difference(operation())); }, tolerance});
    }

    template<typename Operation>
    void addYardstick(const std::string& name, const Operation& operation)
    {
        m_implementations.push_back({Role::Yardstick, name, callOf(operation), {}, 0});
    }

    /// For each number of threads: checks every implementation's result, then lets each make one
    /// call after the other, round by round and each round in another order, and reports the times.
    void run(const Options& options) const;

private:
    template<typename Operation>
    static std::function<void()> callOf(const Operation& operation)
    {
        return [operation] {
            const auto result = operation();
            keep(&result);
        };
    }

    std::string m_workload;
    std::string m_size;
    std::vector<Implementation> m_implementations;
};

} // namespace Bench
