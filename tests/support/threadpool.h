// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TestSupport {

/// Lets OpenCV's parallel loops run on `threads` threads of the standard library, started anew for
/// each loop. The thread sanitizer understands these threads (it reports races in OpenCV's own
/// pool, which is not instrumented), and there can be more of them than cores.
void useThreads(int threads);

} // namespace TestSupport
