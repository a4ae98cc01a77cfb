// SPDX-License-Identifier: Apache-2.0
#include "sources.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringDecoder>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace {

/// The entry `path` of a folder. Qt's own listing silently omits names that are not UTF-8, so the
/// user would never learn that these photographs were not exported.
Source sourceOf(const std::filesystem::path& path)
{
    const std::u8string bytes = path.u8string();
    QStringDecoder decoder(QStringDecoder::Utf8);
    Source source;
    source.path = decoder(
        QByteArrayView(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())));
    if (decoder.hasError())
        source.refusal = QStringLiteral("name is not valid UTF-8");
    return source;
}

bool isPhotographIn(const Source& source)
{
    const QFileInfo info(source.path);
    return NImageUtils::isSupportedFile(source.path) &&
           !info.fileName().startsWith(QLatin1Char('.')) && !info.isDir();
}

QList<Source> photographsIn(const QString& folder, bool mayBeOutputs)
{
    QList<Source> sources;
    std::error_code error;
    std::filesystem::directory_iterator entry(QFileInfo(folder).filesystemFilePath(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        Source source = sourceOf(entry->path());
        source.mayBeOutput = mayBeOutputs;
        if (isPhotographIn(source))
            sources.append(source);
    }
    if (error)
        return {{folder, QString::fromStdString(error.message())}};
    if (sources.isEmpty())
        return {{folder, QStringLiteral("the folder holds no photographs")}};
    std::sort(sources.begin(), sources.end(),
              [](const Source& a, const Source& b) { return a.path < b.path; });
    return sources;
}

} // namespace

QList<Source> findSources(const QStringList& paths, const QSet<QString>& undecodable,
                          const QString& outputFolder)
{
    QList<Source> sources;
    for (const QString& path : paths) {
        if (undecodable.contains(path))
            sources.append({path, QStringLiteral("name is not valid UTF-8")});
        else if (QFileInfo(path).isDir())
            sources.append(photographsIn(path, QFileInfo(path) == QFileInfo(outputFolder)));
        else
            sources.append({path, {}});
    }
    for (qsizetype i = 0; i < sources.size(); ++i)
        sources[i].number = int(i) + 1;
    return sources;
}

QStringList samplePhotographs()
{
    QStringList photographs;
    const QStringList folders = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                          QStringLiteral("backgrounds/mate"),
                                                          QStandardPaths::LocateDirectory);
    for (const QString& folder : folders)
        for (const QString& name : {QStringLiteral("abstract"), QStringLiteral("nature")}) {
            const QDir dir(folder + QLatin1Char('/') + name);
            for (const QString& file : dir.entryList({QStringLiteral("*.jpg")}, QDir::Files))
                photographs.append(dir.filePath(file));
        }
    return photographs;
}
