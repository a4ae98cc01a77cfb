// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QtGlobal>

/// The unit of an amount of storage; decimal, so a kilobyte is 1000 bytes. The codes are fixed.
enum class ByteType {
    Bytes = 0,
    Kilobytes = 1,
    Megabytes = 2,
    Gigabytes = 3,
    Terabytes = 4,
};

/// An amount of storage, kept as it was given and compared by its bytes alone.
///
/// The byte count is amount x unit in double precision without its fraction, so 8.2 gigabytes are
/// 8199999999 bytes and -1.5 kilobytes are -1500. An amount that is not a number and an unknown
/// unit give 0 bytes; what 64 bits cannot hold becomes the least or the largest count.
class IMAGEUTILS_EXPORT ByteValue
{
public:
    ByteValue(double value, ByteType type);
    ByteValue(const ByteValue& other);
    ByteValue& operator=(const ByteValue& other);
    ByteValue& operator=(ByteValue&& other) noexcept;

    bool operator==(const ByteValue& other) const;
    bool operator!=(const ByteValue& other) const;
    bool operator<(const ByteValue& other) const;
    bool operator<=(const ByteValue& other) const;
    bool operator>(const ByteValue& other) const;
    bool operator>=(const ByteValue& other) const;

    /// The amount in bytes.
    operator long long() const;

private:
    qint64 toBytes(double value, ByteType type) const;

    [[maybe_unused]] double m_value;
    qint64 m_bytes;
    [[maybe_unused]] ByteType m_type;
};
