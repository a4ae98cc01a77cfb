// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QTemporaryFile>

#include <cstdint>
#include <cstdlib>

/// The path of a file that holds these bytes until the next call.
inline QString fileOfBytes(const std::uint8_t* data, std::size_t size)
{
    static QTemporaryFile file;
    if (!file.isOpen() && !file.open())
        std::abort();
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.flush();
    return file.fileName();
}
