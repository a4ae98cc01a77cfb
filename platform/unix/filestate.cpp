// SPDX-License-Identifier: Apache-2.0
#include <platform/filestate.h>

#include <sys/stat.h>

Platform::FileState Platform::fileState(const char* path)
{
    struct stat state = {};
    if (stat(path, &state) != 0)
        return {FileState::Kind::Missing};
    return {S_ISREG(state.st_mode) ? FileState::Kind::Regular : FileState::Kind::Other,
            std::int64_t(state.st_ctim.tv_sec) * 1000 + state.st_ctim.tv_nsec / 1'000'000};
}
