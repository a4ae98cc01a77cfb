// SPDX-License-Identifier: Apache-2.0
#include "sources.h"

#include "formats.h"

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

bool isHidden(const Source& source)
{
    return QFileInfo(source.path).fileName().startsWith(QLatin1Char('.'));
}

/// The photographs of folders, one folder after the other.
class Search
{
public:
    Search(const QString& outputFolder, bool isRecursive)
        : m_outputFolder(outputFolder), m_isRecursive(isRecursive)
    {}

    QList<Source> photographsIn(const QString& folder);

private:
    void visit(const QString& folder, const QString& subfolder, bool mayBeOutputs);

    const QFileInfo m_outputFolder;
    const bool m_isRecursive;
    QList<Source> m_found{};
};

QList<Source> Search::photographsIn(const QString& folder)
{
    m_found.clear();
    visit(folder, {}, QFileInfo(folder) == m_outputFolder);
    if (m_found.isEmpty())
        return {{folder, QStringLiteral("the folder holds no photographs")}};
    return m_found;
}

void Search::visit(const QString& folder, const QString& subfolder, bool mayBeOutputs)
{
    QList<Source> photographs;
    QStringList folders;
    std::error_code error;
    std::filesystem::directory_iterator entry(QFileInfo(folder).filesystemFilePath(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        Source source = sourceOf(entry->path());
        const QFileInfo info(source.path);
        source.subfolder = subfolder;
        source.mayBeOutput = mayBeOutputs;
        if (isHidden(source))
            continue;
        if (!info.isDir() && Formats::isPhotographName(source.path))
            photographs.append(source);
        else if (m_isRecursive && info.isDir() && !info.isSymLink() && info != m_outputFolder)
            folders.append(info.fileName());
    }
    if (error)
        photographs = {{folder, QString::fromStdString(error.message())}};
    std::sort(photographs.begin(), photographs.end(),
              [](const Source& a, const Source& b) { return a.path < b.path; });
    m_found.append(photographs);
    folders.sort();
    for (const QString& name : folders)
        visit(QDir(folder).filePath(name), subfolder + name + QLatin1Char('/'), mayBeOutputs);
}

} // namespace

QList<Source> findSources(const QStringList& paths, const QSet<QString>& undecodable,
                          const QString& outputFolder, bool isRecursive)
{
    Search search(outputFolder, isRecursive);
    QList<Source> sources;
    for (const QString& path : paths) {
        if (undecodable.contains(path))
            sources.append({path, QStringLiteral("name is not valid UTF-8")});
        else if (QFileInfo(path).isDir())
            sources.append(search.photographsIn(path));
        else
            sources.append({path, {}});
    }
    for (qsizetype i = 0; i < sources.size(); ++i)
        sources[i].number = int(i) + 1;
    return sources;
}

QStringList namesIn(const QByteArray& list, char separator, QSet<QString>& undecodable)
{
    QStringList names;
    for (const QByteArray& bytes : list.split(separator)) {
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString name = decoder(bytes);
        if (decoder.hasError())
            undecodable.insert(name);
        if (!name.isEmpty())
            names.append(name);
    }
    return names;
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
