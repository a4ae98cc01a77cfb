// SPDX-License-Identifier: Apache-2.0
#include "heifitems.h"

#include <QtCore/QList>

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr qsizetype boxHeader = 8;
constexpr qsizetype fullBoxHeader = 12; // with the version and flags

quint64 number(const QByteArray& bytes, qsizetype at, qsizetype size)
{
    quint64 result = 0;
    for (qsizetype i = at; i < std::min(at + size, bytes.size()); ++i)
        result = result << 8 | quint8(bytes[i]);
    return result;
}

QByteArray bigEndian(quint64 number, qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (qsizetype i = size; i-- > 0; number >>= 8)
        bytes[i] = char(number & 0xFF);
    return bytes;
}

QByteArray box(const char* name, const QByteArray& content)
{
    return bigEndian(quint64(boxHeader + content.size()), 4) + name + content;
}

/// The boxes inside of `meta` by their names, in the order of the file.
QList<std::pair<QByteArray, QByteArray>> boxesOf(const QByteArray& meta)
{
    QList<std::pair<QByteArray, QByteArray>> boxes;
    for (qsizetype at = fullBoxHeader; at + boxHeader <= meta.size();) {
        const auto size = qsizetype(number(meta, at, 4));
        if (size < boxHeader || at + size > meta.size())
            return {};
        boxes.append({meta.mid(at + 4, 4), meta.mid(at + boxHeader, size - boxHeader)});
        at += size;
    }
    return boxes;
}

/// How the box `iloc` says where items are.
struct Locations
{
    explicit Locations(const QByteArray& content)
        : bytes(content), offsetSize(qsizetype(number(content, 4, 1) >> 4)),
          lengthSize(qsizetype(number(content, 4, 1) & 15)),
          baseSize(qsizetype(number(content, 5, 1) >> 4)),
          methodSize(number(content, 0, 1) == 1 ? 2 : 0)
    {}

    bool isKnown() const
    {
        return number(bytes, 0, 1) <= 1 && offsetSize >= 4 && lengthSize >= 4 &&
               (methodSize == 0 || (number(bytes, 5, 1) & 15) == 0);
    }

    qsizetype sizeOfItem() const
    {
        return 2 + methodSize + 2 + baseSize + 2 + offsetSize + lengthSize;
    }

    /// Where the item `id` is, if it is in one piece.
    FileRange of(quint64 id) const;

    /// With every item moved by `shift`, and one more.
    QByteArray with(quint64 id, quint64 offset, quint64 length, quint64 shift) const;

    QByteArray bytes;
    qsizetype offsetSize;
    qsizetype lengthSize;
    qsizetype baseSize; ///< of a number that is added to the offsets of an item; 0: there is none
    qsizetype methodSize;
};

FileRange Locations::of(quint64 id) const
{
    for (qsizetype at = 8; at < bytes.size();) {
        const qsizetype baseAt = at + 2 + methodSize + 2;
        const qsizetype extentsAt = baseAt + baseSize;
        const quint64 extents = number(bytes, extentsAt, 2);
        const bool isInFile = (number(bytes, at + 2, methodSize) & 15) == 0;
        if (number(bytes, at, 2) == id && isInFile && extents == 1)
            return {
                qint64(number(bytes, baseAt, baseSize) + number(bytes, extentsAt + 2, offsetSize)),
                qint64(number(bytes, extentsAt + 2 + offsetSize, lengthSize))};
        at = extentsAt + 2 + qsizetype(extents) * (offsetSize + lengthSize);
    }
    return {};
}

QByteArray Locations::with(quint64 id, quint64 offset, quint64 length, quint64 shift) const
{
    const quint64 count = number(bytes, 6, 2);
    QByteArray result = bytes.left(6) + bigEndian(count + 1, 2);
    qsizetype at = 8;
    for (quint64 item = 0; item < count; ++item) {
        const bool isInFile = (number(bytes, at + 2, methodSize) & 15) == 0;
        const quint64 moved = isInFile ? shift : 0;
        const qsizetype baseAt = at + 2 + methodSize + 2;
        const quint64 base = number(bytes, baseAt, baseSize) + (baseSize > 0 ? moved : 0);
        const quint64 extents = number(bytes, baseAt + baseSize, 2);
        result += bytes.mid(at, baseAt - at) + bigEndian(base, baseSize) + bigEndian(extents, 2);
        at = baseAt + baseSize + 2;
        for (quint64 extent = 0; extent < extents && at < bytes.size(); ++extent) {
            const quint64 place = number(bytes, at, offsetSize) + (baseSize > 0 ? 0 : moved);
            result += bigEndian(place, offsetSize) + bytes.mid(at + offsetSize, lengthSize);
            at += offsetSize + lengthSize;
        }
    }
    return result + bigEndian(id, 2) + QByteArray(methodSize + 2 + baseSize, '\0') +
           bigEndian(1, 2) + bigEndian(offset, offsetSize) + bigEndian(length, lengthSize);
}

/// The largest number of an item in the box `iloc`.
quint64 lastItem(const Locations& locations)
{
    quint64 last = 0;
    const QByteArray& bytes = locations.bytes;
    qsizetype at = 8;
    while (at < bytes.size()) {
        last = std::max(last, number(bytes, at, 2));
        const qsizetype extentsAt = at + 2 + locations.methodSize + 2 + locations.baseSize;
        at = extentsAt + 2 +
             qsizetype(number(bytes, extentsAt, 2)) * (locations.offsetSize + locations.lengthSize);
    }
    return last;
}

QByteArray describedItem(quint64 id)
{
    return box("infe", QByteArray("\2\0\0\0", 4) + bigEndian(id, 2) + QByteArray(2, '\0') +
                           heifXmp.toByteArray());
}

/// The number of the first item in the box `iinf` that has no name and the kind `kind`; 0: none.
quint64 itemOf(const QByteArray& iinf, QByteArrayView kind)
{
    for (qsizetype at = number(iinf, 0, 1) == 0 ? 6 : 8; at + boxHeader < iinf.size();) {
        constexpr qsizetype looked = 64; // at the beginning; the whole would take quadratic time
        const QByteArray item = iinf.mid(at + boxHeader, looked);
        if (item.startsWith('\2') && item.mid(8).startsWith(kind))
            return number(item, 4, 2);
        at += std::max(boxHeader, qsizetype(number(iinf, at, 4)));
    }
    return 0;
}

/// Says that the item `id` describes the item `picture`.
QByteArray reference(quint64 id, quint64 picture)
{
    return box("cdsc", bigEndian(id, 2) + bigEndian(1, 2) + bigEndian(picture, 2));
}

} // namespace

FileRange heifItem(const QByteArray& meta, QByteArrayView kind)
{
    quint64 item = 0;
    QByteArray places;
    for (const auto& [name, content] : boxesOf(meta)) {
        if (name == "iinf")
            item = itemOf(content, kind);
        if (name == "iloc")
            places = content;
    }
    const Locations locations(places);
    return item > 0 && locations.isKnown() ? locations.of(item) : FileRange();
}

QByteArray metaWithXmp(const QByteArray& meta, qint64 end, qsizetype size)
{
    const auto boxes = boxesOf(meta);
    std::map<QByteArray, QByteArray> byName;
    for (const auto& [name, content] : boxes)
        byName[name] = content;
    const Locations locations(byName["iloc"]);
    const bool areVersionsKnown = number(byName["pitm"], 0, 1) == 0 &&
                                  number(byName["iinf"], 0, 1) == 0 &&
                                  number(byName["iref"], 0, 1) == 0;
    if (!locations.isKnown() || !areVersionsKnown || byName["iref"].isEmpty())
        return {};
    const quint64 id = lastItem(locations) + 1;
    const QByteArray item = describedItem(id);
    const QByteArray link = reference(id, number(byName["pitm"], 4, 2));
    const auto shift = quint64(item.size() + link.size() + locations.sizeOfItem());
    QByteArray content = meta.mid(boxHeader, fullBoxHeader - boxHeader);
    for (const auto& [name, old] : boxes) {
        QByteArray changed = old;
        if (name == "iinf")
            changed = old.left(4) + bigEndian(number(old, 4, 2) + 1, 2) + old.mid(6) + item;
        else if (name == "iref")
            changed += link;
        else if (name == "iloc")
            changed = locations.with(id, quint64(end) + shift, quint64(size), shift);
        content += box(name.constData(), changed);
    }
    return box("meta", content);
}
