// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What only the operating system knows about the standard streams. Standard types only.
namespace Console {

/// Whether the error output is a terminal that understands "\r" and the clearing of a line.
bool errorsGoToTerminal();

/// A descriptor of the standard output, which from now on nobody else writes to: what foreign code
/// prints there goes to the error output.
int takeStandardOutput();

} // namespace Console
