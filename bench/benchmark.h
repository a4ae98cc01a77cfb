// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Benchmarks of implementations that do the same work on the same data in one process.
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
    std::string memory;   ///< Where results lie ("fresh", "reused"), as set by the environment.
    int turns = 3;        ///< At most, for each implementation.
    int callsInARow = 12; ///< Calls in each turn. The time since the last call decides which memory
                          ///< the kernel hands out.
    double secondsEach = 2; ///< For all calls of one implementation, which makes at least two.
    std::string dataPath;   ///< The file that figures are appended to, if not empty.
    bool isSmall = false;   ///< Only shows that everything runs.

    /// The same with one thread only.
    Options onOneThread() const;
    /// The same for pictures of `size`: the larger ones get one thread only.
    Options forSize(const PictureSize& size) const;
};

enum class Role {
    Ours,
    Scalar,   ///< The same work by scalar loops, one pass after the other.
    Peer,     ///< Another library that does the same work.
    Yardstick ///< Other work whose cost a reader knows, such as copying the data.
};

struct Implementation
{
    Role role;
    std::string name;
    std::function<void()> call;         ///< One call, including the release of its result.
    std::function<double()> difference; ///< From the expected result; a yardstick has none.
    double tolerance;
};

/// Keeps the compiler from removing a computation whose result is not used.
void keep(const void* result);

class Benchmark
{
public:
    Benchmark(std::string workload, std::string size)
        : m_workload(std::move(workload)), m_size(std::move(size))
    {}

    /// Adds an implementation. `operation` returns a result, and `difference` its largest
    /// difference from the expected result. A difference above `tolerance` ends the program.
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

    /// For each number of threads: checks the result of every implementation, then runs them in
    /// turns, in another order each round, and reports the times.
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
