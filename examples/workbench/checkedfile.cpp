// SPDX-License-Identifier: Apache-2.0
#include "checkedfile.h"

#include <QtCore/QFileInfo>

#include <algorithm>

CheckedFile::CheckedFile(QFile& file)
    : IOProxy(file.fileName().toStdString(), IOProxy::Write), m_file(file)
{
    m_pos = file.pos();
}

// Seeking passes on what is buffered. Where that fails the position stays, and writers that do not
// look at the answer go on writing at the wrong place.
bool CheckedFile::seek(int64_t offset)
{
    const bool isThere = m_file.seek(offset);
    if (!isThere)
        fail(m_file.errorString());
    m_pos = m_file.pos();
    return isThere;
}

size_t CheckedFile::read(void* buffer, size_t size)
{
    const qint64 count = m_file.read(static_cast<char*>(buffer), qint64(size));
    m_pos = m_file.pos();
    return count > 0 ? size_t(count) : 0;
}

size_t CheckedFile::write(const void* buffer, size_t size)
{
    const qint64 count = m_file.write(static_cast<const char*>(buffer), qint64(size));
    m_pos = m_file.pos();
    m_end = std::max(m_end, qint64(m_pos));
    if (count >= 0 && count != qint64(size)) // which comes without an error of its own
        fail(QStringLiteral("not all bytes arrived"));
    else if (count < 0)
        fail(m_file.errorString());
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
