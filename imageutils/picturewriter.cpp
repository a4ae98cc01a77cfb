// SPDX-License-Identifier: Apache-2.0
#include <imageutils/picturewriter.h>

#include <platform/part.h>

WritePicturePart* pictureWriter(std::string& error)
{
    static const Platform::PartFunction part =
        Platform::openPart("imageutils-writer-imgcodecs", "imageutilsPart");
    error = part.error;
    return reinterpret_cast<WritePicturePart*>(part.function);
}
