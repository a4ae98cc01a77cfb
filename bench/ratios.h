// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

/// Registers `run` as "GROUP/PEER", in real time. The library's own peer of a group is called
/// "ours".
void addBenchmark(const std::string& group, const std::string& peer,
                  const std::function<void(benchmark::State&)>& run);

/// The same for one call of `operation`, the release of its result included.
template<typename Operation>
void addOperation(const std::string& group, const std::string& peer, const Operation& operation)
{
    addBenchmark(group, peer, [operation](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(operation());
    });
}

/// Runs what was registered, as Google Benchmark's options on the command line say, and prints for
/// each peer its time and how many times as long it takes as "ours". Each runs several times, in
/// mixed order, and the fastest run counts: the machine is not ours alone.
int runBenchmarks(int argc, char** argv);
