// SPDX-License-Identifier: Apache-2.0
#include <imageutils/picturewriter.h>

#include <platform/plugin.h>

WriteBitmapFunction* pictureWriter(std::string& error)
{
    static const Platform::PluginFunction part =
        Platform::openPlugin("imageutils-writer-imgcodecs", "imageutilsPlugin");
    error = part.error;
    return reinterpret_cast<WriteBitmapFunction*>(part.function);
}
