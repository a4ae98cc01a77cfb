// SPDX-License-Identifier: Apache-2.0
#include "checkedfile.h"

#include <QtCore/QFileInfo>

#include <algorithm>

CheckedFile::CheckedFile(QFile& file)
    : IOProxy(file.fileName().toStdString(), IOProxy::Write), m_file(file)
{}

size_t CheckedFile::read(void* buffer, size_t size)
{
    const qint64 count = m_file.read(static_cast<char*>(buffer), qint64(size));
    return count > 0 ? size_t(count) : 0;
}

size_t CheckedFile::write(const void* buffer, size_t size)
{
    const qint64 count = m_file.write(static_cast<const char*>(buffer), qint64(size));
    m_end = std::max(m_end, m_file.pos());
    if (count != qint64(size))
        fail(m_file.errorString()); // a short count comes without an error of its own
    return count > 0 ? size_t(count) : 0;
}

void CheckedFile::finish()
{
    if (!m_file.flush())
        fail(m_file.errorString());
    if (QFileInfo(m_file.fileName()).size() != m_end)
        fail(QStringLiteral("not all bytes arrived"));
}

void CheckedFile::fail(const QString& reason)
{
    if (m_failure.isEmpty())
        m_failure = reason;
}
