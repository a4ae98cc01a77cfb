// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TestSupport {

/// Lets OpenCV's parallel loops run on `threads` threads of the standard library, started anew for
/// each loop. The thread sanitizer follows these (it reports races in OpenCV's own pool, which is
/// not instrumented), and they may be more than the machine has cores.
void useThreads(int threads);

} // namespace TestSupport
