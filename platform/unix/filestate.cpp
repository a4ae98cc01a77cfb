// SPDX-License-Identifier: Apache-2.0
#include <platform/filestate.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

Platform::FileState Platform::fileState(const char* path)
{
    struct stat state = {};
    if (stat(path, &state) != 0)
        return {FileState::Kind::Missing};
    return {S_ISREG(state.st_mode) ? FileState::Kind::Regular : FileState::Kind::Other,
            std::int64_t(state.st_ctim.tv_sec) * 1000 + state.st_ctim.tv_nsec / 1'000'000};
}

Platform::OpenedFile Platform::openRegularFile(const char* path)
{
    const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {-1, std::strerror(errno)};
    struct stat state = {};
    if (fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode))
        return {descriptor, {}};
    close(descriptor);
    return {-1, "not a regular file"};
}

std::string Platform::nameOfDescriptor(int descriptor)
{
    const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
    return access(name.c_str(), R_OK) == 0 ? name : std::string();
}
