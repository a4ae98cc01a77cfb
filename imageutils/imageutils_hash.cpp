// SPDX-License-Identifier: Apache-2.0
//
// Parameter maps reduced to one number. All arithmetic is unsigned and modulo 2^64.
#include <imageutils/imageutils.h>

#include <imageutils/exceptions_p.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QLibraryInfo>
#include <QtCore/QPoint>

#include <algorithm>
#include <bit>
#include <utility>
#include <vector>

namespace {

/// One step of a hash of values in order, with `a` the running value and `b` the next one.
quint64 combine(quint64 a, quint64 b)
{
    if (a == b)
        return a;
    const quint64 sum = a + b;
    const quint64 mixed = b + 12 * sum * (sum + 1);
    return quint64(qint64(qint32(quint32(mixed) ^ quint32(mixed >> 32))));
}

/// Qt 6's hash of an integer with the seed 0, written out so that it does not follow Qt's version.
quint64 mixInteger(quint64 value)
{
    constexpr quint64 factor = 0xD6E8FEB86659FD93;
    value = (value ^ value >> 32) * factor;
    value = (value ^ value >> 32) * factor;
    return value ^ value >> 32;
}

quint64 mixInteger(int value) { return mixInteger(quint64(qint64(value))); }

quint64 hashString(QStringView string) { return qHash(string, 0); }

/// The value of a variant that holds a `T`, without a copy.
template<typename T>
const T& valueOf(const QVariant& variant)
{
    return *static_cast<const T*>(variant.constData());
}

/// A hash of a few numbers in their order, for a value that consists of several.
class SequenceHash
{
public:
    SequenceHash& operator<<(quint64 element)
    {
        m_hash ^= element + 0x9E3779B9 + (m_hash << 6) + (m_hash >> 2);
        return *this;
    }
    operator quint64() const { return m_hash; }

private:
    quint64 m_hash = 0;
};

quint64 hashStrings(const QStringList& strings)
{
    SequenceHash hash;
    for (const QString& string : strings)
        hash << hashString(string);
    return hash;
}

quint64 hashRect(const QRect& rect)
{
    return SequenceHash() << mixInteger(rect.left()) << mixInteger(rect.right())
                          << mixInteger(rect.top()) << mixInteger(rect.bottom());
}

quint64 hashFloat(float value)
{
    return mixInteger(quint64(std::bit_cast<quint32>(value + 0.0f))); // -0.0 becomes 0.0
}

/// Writes what Qt writes before every value, and all that it writes of one whose type has no stream
/// operators.
void streamType(QDataStream& stream, const QVariant& variant)
{
    const bool isOwnType = variant.typeId() < QMetaType::User;
    stream << quint32(isOwnType ? variant.typeId() : int(QMetaType::User))
           << qint8(variant.isNull());
    if (!isOwnType)
        stream << variant.metaType().name();
}

bool isSet(const QVariant& variant)
{
    return QByteArrayView(variant.metaType().name()).startsWith("QSet<");
}

/// The elements of a `QSet`, which gives them in another order in every process, sorted by their
/// hashes.
QVariantList sortedElements(const QVariant& set)
{
    std::vector<std::pair<quint64, QVariant>> elements;
    for (const QVariant& element : set.toList())
        elements.emplace_back(NImageUtils::hashVariant(element), element);
    std::sort(elements.begin(), elements.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    QVariantList sorted;
    for (const auto& [hash, element] : elements)
        sorted.append(element);
    return sorted;
}

/// Writes what Qt writes, but the entries of a `QVariantHash` in the order of their keys and the
/// elements of a `QSet` in that of their hashes: Qt writes both in an order that follows the random
/// seed of the process.
void streamValue(QDataStream& stream, const QVariant& variant)
{
    const auto streamEntries = [&stream, &variant](const QVariantMap& entries) {
        streamType(stream, variant);
        stream << quint32(entries.size());
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            stream << entry.key();
            streamValue(stream, entry.value());
        }
    };
    // A Qt built with assertions aborts where another one warns.
    const bool isStreamable = variant.metaType().hasRegisteredDataStreamOperators();
    if (variant.typeId() == QMetaType::QVariantHash) {
        const QVariantHash& hash = valueOf<QVariantHash>(variant);
        QVariantMap entries; // sorted by UTF-16 code units
        for (auto entry = hash.cbegin(); entry != hash.cend(); ++entry)
            entries.insert(entry.key(), entry.value());
        streamEntries(entries);
    } else if (variant.typeId() == QMetaType::QVariantMap) {
        streamEntries(valueOf<QVariantMap>(variant));
    } else if (variant.typeId() == QMetaType::QVariantList) {
        const QVariantList& list = valueOf<QVariantList>(variant);
        streamType(stream, variant);
        stream << quint32(list.size());
        for (const QVariant& element : list)
            streamValue(stream, element);
    } else if (isStreamable && isSet(variant)) {
        const QVariantList elements = sortedElements(variant);
        streamType(stream, variant);
        stream << quint32(elements.size());
        for (const QVariant& element : elements)
            element.metaType().save(stream, element.constData());
    } else if (isStreamable || !QLibraryInfo::isDebugBuild()) {
        stream << variant;
    } else {
        streamType(stream, variant);
    }
}

quint64 hashStreamed(const QVariant& variant)
{
    qWarning() << "Type" << variant.typeId() << "not hashable. Using data stream fallback.";
    QByteArray bytes;
    bytes.reserve(1000);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    streamValue(stream, variant);
    return qHashBits(bytes.constData(), std::size_t(buffer.pos()), 0);
}

/// The hash of a value that is neither a map nor a list.
quint64 hashSingle(const QVariant& variant)
{
    switch (variant.typeId()) {
    case QMetaType::UnknownType:
        return 0;
    case QMetaType::Bool:
        return mixInteger(quint64(variant.toBool()));
    case QMetaType::Int:
        return mixInteger(variant.toInt());
    case QMetaType::UInt:
        return mixInteger(quint64(variant.toUInt()));
    case QMetaType::LongLong:
        return mixInteger(quint64(variant.toLongLong()));
    case QMetaType::ULongLong:
        return mixInteger(quint64(variant.toULongLong()));
    case QMetaType::Double:
        return qHash(variant.toDouble(), 0);
    case QMetaType::QChar:
        return mixInteger(quint64(variant.toChar().unicode()));
    case QMetaType::QString:
        return hashString(valueOf<QString>(variant));
    case QMetaType::QStringList:
        return hashStrings(valueOf<QStringList>(variant));
    case QMetaType::QByteArray:
        return qHash(QByteArrayView(valueOf<QByteArray>(variant)), 0);
    case QMetaType::QRect:
        return hashRect(variant.toRect());
    case QMetaType::QSize: {
        const QSize size = variant.toSize();
        return SequenceHash() << mixInteger(size.width()) << mixInteger(size.height());
    }
    case QMetaType::QPoint:
        return qHash(variant.toPoint(), 0);
    case QMetaType::Float:
        return hashFloat(variant.toFloat());
    default:
        return hashStreamed(variant);
    }
}

/// The hash of the list that a text converts to: that of its UTF-16 code units.
quint64 hashAsList(const QString& text)
{
    quint64 hash = 0;
    for (const QChar unit : text)
        hash = combine(hash, mixInteger(quint64(unit.unicode())));
    return hash;
}

quint64 hashAsList(const QStringList& strings)
{
    quint64 hash = 0;
    for (const QString& string : strings)
        hash = combine(hash, hashString(string));
    return hash;
}

/// The list that a value of a map converts to. The usual types that convert to none are listed
/// here, because `QVariant::toList` takes longer than hashing.
QVariantList listOf(const QVariant& variant)
{
    switch (variant.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::QChar:
    case QMetaType::QRect:
    case QMetaType::QSize:
    case QMetaType::QPoint:
        return {};
    default:
        return isSet(variant) ? sortedElements(variant) : variant.toList();
    }
}

/// A map or a list with the position of the next value to hash. The map belongs to the caller; a
/// list is shared.
class Level
{
public:
    explicit Level(const QVariantMap& map) : m_entry(map.cbegin()), m_lastEntry(map.cend()) {}
    explicit Level(const QVariantList& list) : m_isList(true), m_list(list) {}

    bool isList() const { return m_isList; }
    quint64 hash() const { return m_hash; }
    void add(quint64 hash) { m_hash = combine(m_hash, hash); }

    /// The next value, its key already added where it has one; null at the end.
    const QVariant* next()
    {
        if (m_isList)
            return m_element < m_list.size() ? &m_list.at(m_element++) : nullptr;
        if (m_entry == m_lastEntry)
            return nullptr;
        add(hashString(m_entry.key())); // a map is sorted by UTF-16 code units
        return &(m_entry++).value();
    }

private:
    bool m_isList = false;
    QVariantMap::const_iterator m_entry;
    QVariantMap::const_iterator m_lastEntry;
    QVariantList m_list;
    qsizetype m_element = 0;
    quint64 m_hash = 0;
};

/// The levels from the outermost map or list to the one that is being hashed: 10,000 of them would
/// overflow the thread's own stack.
class Levels
{
public:
    template<typename Container>
    explicit Levels(const Container& root)
    {
        m_levels.reserve(8); // deeper than parameters usually are
        m_levels.emplace_back(root);
    }

    quint64 hash()
    {
        for (;;) {
            Level& level = m_levels.back();
            if (const QVariant* const value = level.next()) {
                add(*value, level);
                continue;
            }
            const quint64 hash = level.hash();
            m_levels.pop_back();
            if (m_levels.empty())
                return hash;
            m_levels.back().add(hash);
        }
    }

private:
    /// Adds `value` to `level`, or opens it as a level of its own.
    void add(const QVariant& value, Level& level)
    {
        const int type = value.typeId();
        if (type == QMetaType::QVariantMap)
            m_levels.emplace_back(valueOf<QVariantMap>(value));
        else if (type == QMetaType::QVariantList)
            m_levels.emplace_back(valueOf<QVariantList>(value));
        else if (level.isList())
            level.add(hashSingle(value));
        else
            addEntry(value, level);
    }

    /// The same for a value of a map that is neither map nor list, but may convert to a list.
    void addEntry(const QVariant& value, Level& level)
    {
        const int type = value.typeId();
        if (type == QMetaType::QString && !valueOf<QString>(value).isEmpty())
            return level.add(hashAsList(valueOf<QString>(value)));
        if (type == QMetaType::QStringList && !valueOf<QStringList>(value).isEmpty())
            return level.add(hashAsList(valueOf<QStringList>(value)));
        const QVariantList list = listOf(value);
        if (list.isEmpty())
            level.add(hashSingle(value));
        else
            m_levels.emplace_back(list);
    }

    std::vector<Level> m_levels;
};

} // namespace

quint64 NImageUtils::hash(quint64 a, quint64 b) { return combine(a, b); }

quint64 NImageUtils::hash(quint64 seed, const QVariantMap& params)
{
    return combine(seed, hashParams(params));
}

quint64 NImageUtils::hashParams(const QVariantMap& params)
{
    return neutralOnException("hashParams", [&params] { return Levels(params).hash(); });
}

quint64 NImageUtils::hashList(const QList<QVariant>& list) { return Levels(list).hash(); }

quint64 NImageUtils::hashVariant(const QVariant& variant)
{
    return neutralOnException("hashVariant", [&variant] {
        switch (variant.typeId()) {
        case QMetaType::QVariantMap:
            return Levels(valueOf<QVariantMap>(variant)).hash();
        case QMetaType::QVariantList:
            return Levels(valueOf<QVariantList>(variant)).hash();
        default:
            return hashSingle(variant);
        }
    });
}
