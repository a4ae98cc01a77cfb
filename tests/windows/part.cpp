// SPDX-License-Identifier: Apache-2.0
//
// A part that says that it was opened.
extern "C" __declspec(dllexport) const char* answer() { return "opened"; }
