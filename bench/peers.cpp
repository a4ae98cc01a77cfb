// SPDX-License-Identifier: Apache-2.0
#include "peers.h"

#include <QtCore/QByteArray>

#include <opencv2/core/utility.hpp>

#include <OpenImageIO/imageio.h>

#include <openssl/crypto.h>

#include <libheif/heif.h>
#include <vips/vips.h>
#include <zimg.h>

#include <stdexcept>
#include <string>

void Peers::start(const char* program)
{
    qputenv("VIPS_WARNING", "none"); // any value silences warnings about tags
    if (VIPS_INIT(program) != 0)
        throw std::runtime_error("libvips does not start");
    vips_cache_set_max(0); // so that libvips does not answer the second call from its cache
}

void Peers::useThreads(int count)
{
    cv::setNumThreads(count);
    vips_concurrency_set(count);
    OIIO::attribute("threads", count);
}

std::vector<std::string> Peers::versions()
{
    unsigned int zimg[3];
    zimg_get_version_info(&zimg[0], &zimg[1], &zimg[2]);
    return {std::string("Qt ") + qVersion(),
            std::string("OpenCV ") + cv::getVersionString(),
            std::string("OpenImageIO ") + OIIO_VERSION_STRING,
            std::string("libvips ") + vips_version_string(),
            "zimg " + std::to_string(zimg[0]) + '.' + std::to_string(zimg[1]) + '.' +
                std::to_string(zimg[2]),
            std::string("OpenSSL ") + OpenSSL_version(OPENSSL_VERSION_STRING),
            std::string("libheif ") + heif_get_version()};
}
