// SPDX-License-Identifier: Apache-2.0
#include <metadatareader/metadatareader.h>

#include <metadatareader/picturefacts.h>

#include <baseutils/baseutils.h>

#include <QtCore/QDebug>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <new>

namespace {

std::optional<PictureFacts> factsOf(const QFileInfo& file, QString& error)
{
    if (file.filePath().contains(QChar(u'\0'))) { // the system would open the name before it
        error = QStringLiteral("path holds a null character");
        return {};
    }
    if (!file.isFile()) { // reading a pipe or a device might never end
        error =
            file.exists() ? QStringLiteral("not a regular file") : QStringLiteral("no such file");
        return {};
    }
    try { // damaged files make some readers throw
        return readPictureFacts(file.filePath(), error);
    } catch (const std::bad_alloc&) {
        error = QStringLiteral("not enough memory");
    } catch (...) { // `what()` names functions of the C++ library
        error = QStringLiteral("the file is damaged or of an unsupported kind");
    }
    return {};
}

/// `suffix` where it is one of `extensions`, else the first of these that the application opens.
QString fileTypeOf(const QString& suffix, const QStringList& extensions)
{
    const QStringList supported = BaseUtils::supportedFileFormats();
    if (extensions.contains(suffix) && supported.contains(suffix))
        return suffix;
    const auto first =
        std::find_if(extensions.begin(), extensions.end(),
                     [&](const QString& extension) { return supported.contains(extension); });
    return first == extensions.end() ? QString() : *first;
}

} // namespace

NExifToolMetadata readMetadata(const QString& path)
{
    const QFileInfo file(path);
    QString error;
    const std::optional<PictureFacts> facts = factsOf(file, error);
    if (!facts) {
        qWarning() << "readMetadata: could not read the picture:" << path << error;
        return {{}, file.fileName(), 0, 0, {}};
    }
    // A header may say anything; below 1 it says nothing.
    return {fileTypeOf(file.suffix().toLower(), facts->extensions), file.fileName(),
            std::max(facts->width, 0), std::max(facts->height, 0), facts->values};
}
