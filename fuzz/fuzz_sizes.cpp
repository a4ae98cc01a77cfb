// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a picture file by the readers of single formats.
#include <imageutils/imageheader.h>

#include <QtCore/QTemporaryFile>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static QTemporaryFile file;
    if (!file.isOpen() && !file.open())
        std::abort();
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.flush();
    const std::optional<ImageHeader> header = readHeaderAlone(file.fileName().toStdString());
    if (header && (header->width < 1 || header->height < 1))
        std::abort();
    return 0;
}
