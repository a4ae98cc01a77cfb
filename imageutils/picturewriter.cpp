// SPDX-License-Identifier: Apache-2.0
#include <imageutils/picturewriter.h>

#include <platform/plugin.h>

WriteBitmapFunction* pictureWriter(std::string& error)
{
    static constinit Platform::Plugin plugin("imageutils-writer-imgcodecs");
    const Platform::PluginFunction opened = plugin.function();
    error = opened.error;
    return reinterpret_cast<WriteBitmapFunction*>(opened.function);
}
