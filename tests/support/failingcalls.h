// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

/// Makes calls of the C library fail, to test what a caller does then. A program that links this
/// replaces the allocation functions and the functions for files of the C library, also for all
/// libraries that it uses, except for calls from within the C library itself.
namespace FailingCalls {

enum class Kind { Allocation, File };

/// What one forked child did.
struct Outcome
{
    bool failed = false; ///< Whether a call failed before `operation` was done.
    std::string wrong;   ///< Why the outcome is wrong; empty if it is right.
};

/// Which calls fail.
struct Failure
{
    Kind kind;
    int call;     ///< The number of the first call that fails, from 1 on.
    int error;    ///< The errno that it sets.
    bool forGood; ///< Whether all later calls fail as well.
};

/// Runs `operation` in a forked child in which calls fail. `operation` returns a reason why its
/// result is wrong, or an empty text. A child that crashes, hangs, leaks a
/// descriptor or lets an exception out is wrong, too.
Outcome run(const Failure& failure, const std::function<std::string()>& operation);

/// Ends the failing of calls in the child: what `operation` does afterwards is not tested.
void disarm();

/// Whether a call has failed in this child.
bool hasFailed();

} // namespace FailingCalls
