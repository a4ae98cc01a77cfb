// SPDX-License-Identifier: Apache-2.0
#include <imageutils/bytevalue.h>

#include <cmath>
#include <limits>

namespace {

/// 0 for an unknown unit.
double bytesPerUnit(ByteType type)
{
    switch (type) {
    case ByteType::Bytes:
        return 1;
    case ByteType::Kilobytes:
        return 1e3;
    case ByteType::Megabytes:
        return 1e6;
    case ByteType::Gigabytes:
        return 1e9;
    case ByteType::Terabytes:
        return 1e12;
    }
    return 0;
}

} // namespace

ByteValue::ByteValue(double value, ByteType type)
    : m_value(value), m_bytes(toBytes(value, type)), m_type(type)
{}

ByteValue::ByteValue(const ByteValue& other) = default;

ByteValue& ByteValue::operator=(const ByteValue& other) = default;

ByteValue& ByteValue::operator=(ByteValue&& other) noexcept = default;

bool ByteValue::operator==(const ByteValue& other) const { return m_bytes == other.m_bytes; }

bool ByteValue::operator!=(const ByteValue& other) const { return m_bytes != other.m_bytes; }

bool ByteValue::operator<(const ByteValue& other) const { return m_bytes < other.m_bytes; }

bool ByteValue::operator<=(const ByteValue& other) const { return m_bytes <= other.m_bytes; }

bool ByteValue::operator>(const ByteValue& other) const { return m_bytes > other.m_bytes; }

bool ByteValue::operator>=(const ByteValue& other) const { return m_bytes >= other.m_bytes; }

ByteValue::operator long long() const { return m_bytes; }

qint64 ByteValue::toBytes(double value, ByteType type) const
{
    using Limits = std::numeric_limits<qint64>;
    const double bytes = value * bytesPerUnit(type);
    if (std::isnan(bytes)) // infinity of an unknown unit too
        return 0;
    // The largest count is not a double; the first one beyond it, 2^63, is.
    if (bytes >= -double(Limits::min()))
        return Limits::max();
    if (bytes <= double(Limits::min()))
        return Limits::min();
    return qint64(bytes);
}
