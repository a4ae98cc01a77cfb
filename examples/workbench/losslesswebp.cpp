// SPDX-License-Identifier: Apache-2.0
#include "losslesswebp.h"

#include <webp/encode.h>

#include <memory>

namespace {

struct Free
{
    void operator()(std::uint8_t* bytes) const { WebPFree(bytes); }
};

} // namespace

bool writeLosslessWebP(QFile& file, const QImage& image)
{
    const QImage bytes = image.convertToFormat(QImage::Format_RGBA8888);
    if (bytes.isNull()) // no memory
        return false;
    std::uint8_t* encoded = nullptr;
    const std::size_t length = WebPEncodeLosslessRGBA(
        bytes.constBits(), bytes.width(), bytes.height(), int(bytes.bytesPerLine()), &encoded);
    const std::unique_ptr<std::uint8_t, Free> owner(encoded);
    return length > 0 &&
           file.write(reinterpret_cast<const char*>(encoded), qint64(length)) == qint64(length) &&
           file.flush();
}
