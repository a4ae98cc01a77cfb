// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// What only the operating system knows about the error output. Standard types only.
namespace Console {

/// Whether the error output is a terminal that understands "\r" and the clearing of a line.
bool errorsGoToTerminal();

/// Writes `size` bytes to the error output as it was, also while it is silenced.
void writeErrors(const char* bytes, std::size_t size);

/// Keeps everything that is written to the error output away from it while it lives. Some image
/// readers print there by themselves what they report properly as well. Objects may overlap, on
/// several threads; the output is back when the last one has gone.
class SilencedErrors
{
public:
    SilencedErrors();
    ~SilencedErrors();
    SilencedErrors(const SilencedErrors&) = delete;
    SilencedErrors& operator=(const SilencedErrors&) = delete;
};

} // namespace Console
