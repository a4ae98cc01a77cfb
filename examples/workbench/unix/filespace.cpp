// SPDX-License-Identifier: Apache-2.0
#include "../filespace.h"

#include <fcntl.h>
#include <unistd.h>

int FileSpace::fillHoles(const char* path)
{
    const int file = open(path, O_RDWR | O_CLOEXEC);
    if (file < 0)
        return 0;
    const off_t size = lseek(file, 0, SEEK_END);
    const off_t hole =
        size > 0 ? lseek(file, 0, SEEK_HOLE) : size; // the end of a file counts as one
    const int error = hole >= 0 && hole < size ? posix_fallocate(file, 0, size) : 0;
    close(file);
    return error;
}
