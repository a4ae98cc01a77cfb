// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a picture file.
#include <metadatareader/metadatareader.h>

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
    const NExifToolMetadata record = readMetadata(file.fileName());
    if (record.imageWidth() < 0 || record.imageHeight() < 0 || record.imageName().isEmpty())
        std::abort();
    return 0;
}
