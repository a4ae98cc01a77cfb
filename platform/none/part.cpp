// SPDX-License-Identifier: Apache-2.0
#include <platform/part.h>

Platform::PartFunction Platform::openPart(const char* part, const char* /*function*/)
{
    return {nullptr, std::string(part) + ": parts cannot be opened on this system"};
}
