// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a picture file by the readers of single formats.
#include "bytesfile.h"

#include <imageutils/imageheader.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::optional<ImageHeader> header =
        readHeaderAlone(fileOfBytes(data, size).toStdString());
    if (header && (header->width < 1 || header->height < 1))
        std::abort();
    return 0;
}
