// SPDX-License-Identifier: Apache-2.0
//
// A plug-in with one function, which tells that it was opened.
extern "C" __declspec(dllexport) const char* answer() { return "opened"; }
