// SPDX-License-Identifier: Apache-2.0
#include <platform/writefile.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

std::optional<int> Platform::openForWriting(const char* path)
{
    int descriptor = -1;
    do {
        descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0666);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

Platform::Stored Platform::isStored(int descriptor)
{
    int result = 0;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    if (result != 0)
        return errno == EINVAL || errno == ENOSYS ? Stored::Unknown : Stored::No;
    // Some file systems report an error to close() alone, and to each close() of the open file.
    const int duplicate = dup(descriptor);
    if (duplicate < 0)
        return Stored::Unknown;
    return close(duplicate) == 0 ? Stored::Yes : Stored::No;
}
