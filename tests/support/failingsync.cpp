// SPDX-License-Identifier: Apache-2.0
//
// Stands before the C library's fsync(), and fails as a lost network file system does while the
// environment variable FSYNC is not empty.
#include <QtCore/QtGlobal>

#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" int fsync(int descriptor)
{
    if (!qEnvironmentVariableIsEmpty("FSYNC")) {
        errno = EIO;
        return -1;
    }
    return int(syscall(SYS_fsync, descriptor));
}
