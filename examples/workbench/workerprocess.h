// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The argument of a worker process that other programs precede where there are too few processors.
/// Launchers that cannot do this ignore it.
constexpr const char* lowPriorityArgument = "--low-priority";

/// The whole of a worker process, with the arguments of main(); jobmessage.h says what goes in and
/// out. Returns the exit status.
extern "C" [[gnu::visibility("default")]] int runWorker(int argc, char** argv);
