// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageheader.h>

#include <imageutils/headers/readers.h>
#include <imageutils/headers/regularfile.h>
#include <imageutils/plugins/headerplugin.h>
#include <platform/plugin.h>

#include <QtCore/QFile>

namespace {

bool isWebpFile(FileBytes& bytes)
{
    const std::string_view start = bytes.at(0, 12);
    return start.starts_with("RIFF") && start.ends_with("WEBP");
}

/// The answer of OpenImageIO about the file at `utf8Path`, which it opens by `name`, or about the
/// JPEG file `jpeg`.
bool askOpenImageIO(const std::string& utf8Path, const std::string& name, const std::string& jpeg,
                    ImageHeader& header, std::string& error)
{
    static constinit Platform::Plugin plugin("imageutils-header-openimageio");
    const Platform::PluginFunction opened = plugin.function();
    if (!opened.function) {
        error = opened.error;
        return false;
    }
    const auto read = reinterpret_cast<OpenHeaderFunction*>(opened.function);
    if (read(utf8Path, name, jpeg, header, error))
        return true;
    if (error.empty())
        error = "not enough memory";
    return false;
}

/// The answer about a file that no reader of ours knows. A side below 1 is no answer: OpenImageIO
/// opens files that say so.
std::optional<ImageHeader> readByOpenImageIO(const std::string& utf8Path, const std::string& name,
                                             std::string& error)
{
    ImageHeader header;
    if (!askOpenImageIO(utf8Path, name, {}, header, error))
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
    if (!RegularFile::open(file, utf8Path, QFile::ReadOnly | QFile::Unbuffered, error)) {
        error = utf8Path + ": " + error;
        return {};
    }
    FileBytes bytes([&file](std::int64_t position, char* to, std::int64_t count) {
        return file.seek(position) ? file.read(to, count) : -1;
    });
    std::optional<FoundHeader> found = readKnownHeader(bytes);
    if (bytes.hasFailed() || (found && found->refusal)) {
        error = utf8Path + ": " +
                (bytes.hasFailed() ? file.errorString().toStdString() : found->refusal);
        return {};
    }
    if (!found) {
        const bool isWebp = isWebpFile(bytes);
        std::optional<ImageHeader> header =
            readByOpenImageIO(utf8Path, RegularFile::nameFor(file, utf8Path), error);
        if (header && isWebp)
            header->turned = isWebpTurned(bytes);
        return header;
    }
    ImageHeader oriented;
    if (!found->unclearTurn.empty()) {
        if (!askOpenImageIO(utf8Path, {}, found->unclearTurn, oriented, error))
            return {};
        found->header.turned = oriented.turned;
    }
    return found->header;
}
