// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The whole of a worker process, with the arguments of main(); jobmessage.h says what goes in and
/// out. Returns the exit status.
extern "C" [[gnu::visibility("default")]] int runWorker(int argc, char** argv);
