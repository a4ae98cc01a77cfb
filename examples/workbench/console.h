// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What only the operating system knows about the standard streams. Standard types only.
namespace Console {

/// Whether the error output is a terminal that understands "\r" and the clearing of a line.
bool errorsGoToTerminal();

/// A new descriptor of the standard output. From now on, what other code in the process prints to
/// the standard output goes to the error output, so that foreign libraries cannot damage our
/// output.
int takeStandardOutput();

} // namespace Console
