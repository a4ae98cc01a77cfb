// SPDX-License-Identifier: Apache-2.0
//
// Any text as a path and as a URL: both take each other back, and the pieces of a path are pieces
// of it.
#include <baseutils/baseutils.h>
#include <imageutils/imageutils.h>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString name = NImageUtils::getFilename(text), base = NImageUtils::getBaseName(text);
    const QString extension = NImageUtils::getExtension(text);
    const bool isPiece = text.endsWith(name) && name.startsWith(base) && name.endsWith(extension);
    if (!isPiece || name.contains(u'/') || extension.contains(u'.'))
        std::abort();
    if (NImageUtils::isRawFile(text) && !NImageUtils::isSupportedFile(text))
        std::abort();
    if (NImageUtils::isSupportedFile(text) !=
        NImageUtils::isSupportedFile("/folder/a." + extension))
        std::abort();
    const bool isAbsolute = text.startsWith(u'/') && !text.startsWith(QLatin1String("//"));
    if (isAbsolute && !text.contains(QChar::Null) && !text.contains(QChar::ReplacementCharacter) &&
        NImageUtils::urlToString(NImageUtils::stringToUrl(text)) != text)
        std::abort();
    NImageUtils::urlToString(QUrl(text));
    NImageUtils::urlToString(QUrl::fromEncoded(text.toUtf8()));
    return 0;
}
