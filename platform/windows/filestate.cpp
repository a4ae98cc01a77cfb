// SPDX-License-Identifier: Apache-2.0
#include <platform/filestate.h>

// The change time takes an open handle here, as it does for Qt: asking ourselves would gain
// nothing.
Platform::FileState Platform::fileState(const char* /*path*/) { return {}; }
