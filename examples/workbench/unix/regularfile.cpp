// SPDX-License-Identifier: Apache-2.0
#include "../regularfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::optional<RegularFile::Opened> RegularFile::open(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat state = {};
    if (descriptor < 0 || fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode)) {
        close(descriptor);
        return {};
    }
    const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
    return Opened{descriptor, access(name.c_str(), R_OK) == 0 ? name : path};
}
