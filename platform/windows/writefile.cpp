// SPDX-License-Identifier: Apache-2.0
#include <platform/writefile.h>

#include <windows.h>

#include <io.h>

// No name in a folder belongs to a pipe here, so QFile does not wait either.
std::optional<int> Platform::openForWriting(const char* /*path*/) { return {}; }

Platform::Stored Platform::isStored(int descriptor)
{
    // A file that Qt has opened without the C runtime has no descriptor.
    if (descriptor < 0)
        return Stored::Unknown;
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    return FlushFileBuffers(handle) ? Stored::Yes : Stored::No;
}
