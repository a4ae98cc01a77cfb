// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageheader.h>

#include <imageutils/headers/readers.h>
#include <imageutils/plugins/headerplugin.h>
#include <platform/filestate.h>
#include <platform/plugin.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

bool openForReading(QFile& file, const std::string& utf8Path, std::string& error)
{
    const Platform::OpenedFile opened = Platform::openRegularFile(utf8Path.c_str());
    error = opened.error;
    if (opened.descriptor >= 0)
        return file.open(opened.descriptor, QFile::ReadOnly | QFile::Unbuffered,
                         QFile::AutoCloseHandle);
    if (!error.empty())
        return false;
    file.setFileName(QString::fromStdString(utf8Path));
    if (!QFileInfo(file).isFile() || !file.open(QFile::ReadOnly | QFile::Unbuffered))
        error = file.errorString().toStdString();
    return file.isOpen();
}

bool isWebpFile(FileBytes& bytes)
{
    const std::string_view start = bytes.at(0, 12);
    return start.starts_with("RIFF") && start.ends_with("WEBP");
}

/// The answer of OpenImageIO about the file at `utf8Path`, or about the JPEG file `jpeg`.
bool askOpenImageIO(const std::string& utf8Path, const std::string& jpeg, ImageHeader& header,
                    std::string& error)
{
    static constinit Platform::Plugin plugin("imageutils-header-openimageio");
    const Platform::PluginFunction opened = plugin.function();
    if (!opened.function) {
        error = opened.error;
        return false;
    }
    // An absolute path, because some readers take a name like "pipe:0.mov" for an address.
    const QString path = QFileInfo(QString::fromStdString(utf8Path)).absoluteFilePath();
    const auto read = reinterpret_cast<OpenHeaderFunction*>(opened.function);
    if (read(path.toStdString(), jpeg, header, error))
        return true;
    if (error.empty())
        error = "not enough memory";
    return false;
}

/// The answer about a file that no reader of ours knows. A side below 1 is no answer: OpenImageIO
/// opens files that say so.
std::optional<ImageHeader> readByOpenImageIO(const std::string& utf8Path, std::string& error)
{
    ImageHeader header;
    if (!askOpenImageIO(utf8Path, {}, header, error))
        return {};
    if (header.width >= 1 && header.height >= 1)
        return header;
    error = "header says " + std::to_string(header.width) + " x " + std::to_string(header.height);
    return {};
}

} // namespace

std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error)
{
    QFile file;
    if (!openForReading(file, utf8Path, error)) {
        error = utf8Path + ": " + error;
        return {};
    }
    FileBytes bytes([&file](std::int64_t position, char* to, std::int64_t count) {
        return file.seek(position) ? file.read(to, count) : 0;
    });
    std::optional<FoundHeader> found = readKnownHeader(bytes);
    if (bytes.hasFailed() || (found && found->refusal)) {
        error = utf8Path + ": " +
                (bytes.hasFailed() ? file.errorString().toStdString() : found->refusal);
        return {};
    }
    if (!found) {
        const bool isWebp = isWebpFile(bytes);
        std::optional<ImageHeader> header = readByOpenImageIO(utf8Path, error);
        if (header && isWebp)
            header->turned = isWebpTurned(bytes);
        return header;
    }
    ImageHeader oriented;
    if (!found->unclearTurn.empty()) {
        if (!askOpenImageIO(utf8Path, found->unclearTurn, oriented, error))
            return {};
        found->header.turned = oriented.turned;
    }
    return found->header;
}
