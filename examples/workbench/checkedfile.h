// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>

#include <OpenImageIO/filesystem.h>

/// Lets OpenImageIO write into an open file, and remembers whether every byte arrived: its writers
/// do not ask after each of them, and none asks when it closes. After the first failure the bytes
/// are dropped and count as written, because writers go wrong where they are told: that of WebP in
/// OpenImageIO 3.1 encodes the picture again from within itself, for hours. `tell()` is the base
/// class's, which answers `m_pos`, because it is const from OpenImageIO 3 on only.
class CheckedFile : public OIIO::Filesystem::IOProxy
{
public:
    explicit CheckedFile(QFile& file);

    /// What went wrong first; empty when every byte so far is in the file.
    const QString& failure() const { return m_failure; }

    /// Passes on what is buffered, and compares the length of the file with what was written.
    void finish();

    const char* proxytype() const override { return "checked file"; }
    bool seek(int64_t offset) override;
    size_t read(void* buffer, size_t size) override;
    size_t write(const void* buffer, size_t size) override;
    size_t size() const override { return size_t(m_end); } // QFile's would lose a failure

private:
    void fail(const QString& reason);

    QFile& m_file;
    qint64 m_end; // of the farthest byte
    QString m_failure;
};
