// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// What only the operating system knows about the command line and the standard streams. Standard
/// types only.
namespace Console {

/// What the user typed, the program's name first: the bytes that main() got, or UTF-8 where the
/// system's own text is wide and main() gets what the code page has of it.
std::vector<std::string> arguments(int argc, char** argv);

/// Whether the error output is a terminal that understands "\r" and the clearing of a line.
bool errorsGoToTerminal();

/// A new descriptor of the standard output. From now on, what other code in the process prints to
/// the standard output goes to the error output, so that foreign libraries cannot damage our
/// output.
int takeStandardOutput();

} // namespace Console
