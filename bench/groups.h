// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "benchmark.h"

/// The groups of benchmarks, by subject.
namespace Bench {

void resample(const Options& options);
void planes(const Options& options);
void analysis(const Options& options);
void base64(const Options& options);
void serialize(const Options& options);
void hash(const Options& options);
void imageSize(const Options& options);

} // namespace Bench
