// SPDX-License-Identifier: Apache-2.0
#include "checkedfile.h"

#include <QtCore/QFileInfo>

#include <algorithm>

CheckedFile::CheckedFile(QFile& file)
    : IOProxy(file.fileName().toStdString(), IOProxy::Write), m_file(file), m_end(file.size())
{
    m_pos = file.pos();
}

// Seeking passes on what is buffered.
bool CheckedFile::seek(int64_t offset)
{
    if (m_failure.isEmpty() && !m_file.seek(offset))
        fail(m_file.errorString());
    m_pos = offset;
    return true;
}

size_t CheckedFile::read(void* buffer, size_t size)
{
    if (!m_file.flush()) // which `QFile::read` does as well, and loses the failure
        fail(m_file.errorString());
    const qint64 count = m_file.read(static_cast<char*>(buffer), qint64(size));
    m_pos = m_file.pos();
    return count > 0 ? size_t(count) : 0;
}

size_t CheckedFile::write(const void* buffer, size_t size)
{
    if (m_failure.isEmpty()) {
        const qint64 count = m_file.write(static_cast<const char*>(buffer), qint64(size));
        if (count >= 0 && count != qint64(size)) // which comes without an error of its own
            fail(QStringLiteral("not all bytes arrived"));
        else if (count < 0)
            fail(m_file.errorString());
    }
    m_pos += int64_t(size);
    m_end = std::max(m_end, qint64(m_pos));
    return size;
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
