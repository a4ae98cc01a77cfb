// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a picture file.
#include "bytesfile.h"

#include <metadatareader/metadatareader.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const NExifToolMetadata record = readMetadata(fileOfBytes(data, size));
    if (record.imageWidth() < 0 || record.imageHeight() < 0 || record.imageName().isEmpty())
        std::abort();
    return 0;
}
