// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QtGlobal>

/// The unit of an amount of storage; decimal, so a kilobyte is 1000 bytes. The codes are fixed.
///
/// @ingroup amounts
/// @since 1.0
enum class ByteType {
    Bytes = 0,     ///< 1 byte
    Kilobytes = 1, ///< 1000 bytes
    Megabytes = 2, ///< 1000 kilobytes
    Gigabytes = 3, ///< 1000 megabytes
    Terabytes = 4, ///< 1000 gigabytes
};

/// An amount of storage, kept as it was given and compared by its bytes alone.
///
/// The byte count is amount x unit in double precision without its fraction, so 8.2 gigabytes are
/// 8199999999 bytes and -1.5 kilobytes are -1500.
///
/// @ingroup amounts
/// @par Thread safety
/// A value without shared state: several threads may read one object, or have one object each.
/// @par Ownership
/// Copies are independent of each other.
/// @par Units
/// `ByteType` at construction, bytes afterwards.
/// @par Failure
/// An amount that is not a number and an unknown unit give 0 bytes; a count beyond 64 bits becomes
/// the least or the largest one. Nothing is logged or thrown.
/// @since 1.0
class IMAGEUTILS_EXPORT ByteValue
{
public:
    /// `value` times the unit `type`.
    ByteValue(double value, ByteType type);
    /// A copy of `other`.
    ByteValue(const ByteValue& other);
    /// Becomes a copy of `other`.
    ByteValue& operator=(const ByteValue& other);
    /// Becomes a copy of `other`.
    ByteValue& operator=(ByteValue&& other) noexcept;

    /// Whether the byte counts are equal.
    bool operator==(const ByteValue& other) const;
    /// Whether the byte counts differ.
    bool operator!=(const ByteValue& other) const;
    /// Whether this byte count is smaller.
    bool operator<(const ByteValue& other) const;
    /// Whether this byte count is smaller or equal.
    bool operator<=(const ByteValue& other) const;
    /// Whether this byte count is larger.
    bool operator>(const ByteValue& other) const;
    /// Whether this byte count is larger or equal.
    bool operator>=(const ByteValue& other) const;

    /// The amount in bytes.
    operator long long() const;

private:
    qint64 toBytes(double value, ByteType type) const;

    [[maybe_unused]] double m_value;
    qint64 m_bytes;
    [[maybe_unused]] ByteType m_type;
};
