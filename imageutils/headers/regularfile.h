// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/filestate.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <string>

/// How the library and the companion `metadatareader` open a file: once, so that its kind is that
/// of the file that is read.
namespace RegularFile {

/// Opens the regular file at `utf8Path` in `file` for reading, in the mode `mode`; false where it
/// cannot, for the reason `error`. Never waits for another program.
inline bool open(QFile& file, const std::string& utf8Path, QFile::OpenMode mode, std::string& error)
{
    const Platform::OpenedFile opened = Platform::openRegularFile(utf8Path.c_str());
    error = opened.error;
    if (opened.descriptor >= 0)
        return file.open(opened.descriptor, mode, QFile::AutoCloseHandle);
    if (!error.empty())
        return false;
    file.setFileName(QString::fromStdString(utf8Path));
    if (const QFileInfo info(file); !info.isFile())
        error = info.exists() ? "not a regular file" : "no such file";
    else if (!file.open(mode))
        error = file.errorString().toStdString();
    return file.isOpen();
}

/// The name by which OpenImageIO opens the file that is open in `file`, or else the absolute form
/// of `utf8Path`: some readers take a name like "pipe:0.mov" for an address.
inline std::string nameFor(const QFile& file, const std::string& utf8Path)
{
    const std::string name = Platform::nameOfDescriptor(file.handle());
    return name.empty()
               ? QFileInfo(QString::fromStdString(utf8Path)).absoluteFilePath().toStdString()
               : name;
}

} // namespace RegularFile
