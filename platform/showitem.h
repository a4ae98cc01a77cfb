// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace Platform {

/// Asks the file manager to open the folder of the existing file or folder `path` (UTF-8, absolute,
/// native separators) with that item selected.
///
/// `done` is called once, on the calling thread, with whether the file manager accepted the
/// request: before this function returns where the system answers synchronously, otherwise from
/// the event loop, after at most `limit` for all questions together. Before each further question
/// `isWanted` tells whether the caller still needs the answer; once it has said no, no other
/// service is asked and `done` gets false.
///
/// The calling thread is that of the application object; on another thread, or without an
/// application object, `done` gets false. If the application object is destroyed first, `done` is
/// not called any more.
void showItem(const std::string& path, std::chrono::milliseconds limit,
              const std::function<bool()>& isWanted, const std::function<void(bool shown)>& done);

} // namespace Platform
