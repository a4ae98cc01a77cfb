// SPDX-License-Identifier: Apache-2.0
//
// Any bytes on the clipboard, as a list of URLs, as a picture, or as both: what comes back are
// regular files with the name of a picture, a pasted picture is whole, and the temporary folder
// holds nothing else.
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>

#include <cstdlib>

namespace {

/// A GUI application whose temporary folder is its own.
struct Desktop
{
    Desktop()
    {
        QDir(folder.path()).mkdir(QStringLiteral("folder.png"));
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("TMPDIR", QFile::encodeName(folder.path()));
    }

    QTemporaryDir folder;
    int count = 1;
    char name[5] = "fuzz";
    char* arguments[2] = {name, nullptr};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Desktop desktop;
    static const QGuiApplication application(desktop.count, desktop.arguments);
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    auto* const offered = new QMimeData; // the clipboard takes it
    const QString subfolder = desktop.folder.filePath(QStringLiteral("folder.png"));
    if (data[0] & 1)
        offered->setData(QStringLiteral("text/uri-list"), bytes);
    if (data[0] & 8) // no input can name what is in the temporary folder
        offered->setUrls({QUrl::fromLocalFile(subfolder)});
    if (data[0] & 2)
        offered->setData(QStringLiteral("application/x-qt-image"), bytes);
    if (data[0] & 4)
        offered->setImageData(QImage::fromData(bytes));
    QGuiApplication::clipboard()->setMimeData(offered);
    OSUtils utils;
    const QStringList paths = utils.clipboard();
    QDir folder(desktop.folder.path());
    for (const QString& path : paths) {
        if (!QFileInfo(path).isFile() || !NImageUtils::isSupportedFile(path) ||
            (path.startsWith(folder.path()) && QImage(path).isNull()))
            std::abort();
    }
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
        if (!paths.contains(folder.filePath(name)) || !folder.remove(name))
            std::abort();
    }
    return 0;
}
