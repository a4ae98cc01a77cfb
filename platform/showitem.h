// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace Platform {

/// Asks the file manager to open the folder of the existing file or folder `path` (UTF-8, native
/// separators, absolute or relative) with that item selected.
///
/// `done` is called once, on the calling thread, with whether the file manager took the order: at
/// once where the system answers at once, else from the event loop, at the latest when `limit`, for
/// all questions together, has passed. The calling thread is that of the application object; on
/// another one, or without such an object, the answer is "no". If the application object is
/// destroyed first, `done` is not called any more.
void showItem(const std::string& path, std::chrono::milliseconds limit,
              const std::function<void(bool shown)>& done);

} // namespace Platform
