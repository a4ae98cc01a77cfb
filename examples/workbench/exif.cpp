// SPDX-License-Identifier: Apache-2.0
#include "exif.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <utility>

namespace {

constexpr int entrySize = 12;
constexpr qint64 longestValue = 16 << 20;

/// Bytes per element of a TIFF type; 0 for types that TIFF does not define.
int sizeOfType(quint16 type)
{
    constexpr int sizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < std::size(sizes) ? sizes[type] : 0;
}

/// The bytes that change places when the byte order does: rationals are two numbers.
int swappedSize(quint16 type)
{
    const bool isRational = type == 5 || type == 10;
    return isRational ? 4 : sizeOfType(type);
}

template<typename T>
QByteArray littleEndian(T number)
{
    QByteArray bytes(sizeof(T), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

class Parser
{
public:
    Parser(const ReadBytes& read, bool isBigEndian) : m_read(read), m_isBigEndian(isBigEndian) {}

    template<typename T>
    T number(const QByteArray& bytes, qsizetype offset) const
    {
        if (offset + qsizetype(sizeof(T)) > bytes.size())
            return 0;
        const char* const at = bytes.constData() + offset;
        return m_isBigEndian ? qFromBigEndian<T>(at) : qFromLittleEndian<T>(at);
    }

    ExifDirectory directory(qint64 offset) const
    {
        ExifDirectory result;
        const QByteArray counted = m_read(offset, 2);
        const QByteArray entries =
            m_read(offset + 2, qint64(number<quint16>(counted, 0)) * entrySize);
        for (qsizetype at = 0; at + entrySize <= entries.size(); at += entrySize)
            if (auto entry = entryAt(entries, at))
                result.try_emplace(number<quint16>(entries, at), std::move(*entry));
        return result;
    }

    /// The directory to which the entry `tag` points; the entry is taken out.
    ExifDirectory pointedBy(ExifDirectory& directory, quint16 tag) const
    {
        const auto pointer = directory.extract(tag);
        if (pointer.empty() || pointer.mapped().value.size() != 4)
            return {};
        return this->directory(qFromLittleEndian<quint32>(pointer.mapped().value.constData()));
    }

private:
    std::optional<ExifEntry> entryAt(const QByteArray& entries, qsizetype at) const
    {
        ExifEntry entry{number<quint16>(entries, at + 2), number<quint32>(entries, at + 4), {}};
        const qint64 size = qint64(entry.count) * sizeOfType(entry.type);
        if (size < 1 || size > longestValue)
            return {};
        entry.value =
            size <= 4 ? entries.mid(at + 8, size) : m_read(number<quint32>(entries, at + 8), size);
        if (entry.value.size() != size)
            return {};
        const bool isUtf16 = number<quint16>(entries, at) == ExifTag::UserComment &&
                             entry.value.startsWith(QByteArrayView("UNICODE\0", 8));
        if (m_isBigEndian && isUtf16) // has the byte order of the numbers
            for (qsizetype first = 8; first + 1 < size; first += 2)
                std::swap(entry.value[first], entry.value[first + 1]);
        else if (m_isBigEndian)
            for (qsizetype first = 0; first < size; first += swappedSize(entry.type))
                std::reverse(entry.value.begin() + first,
                             entry.value.begin() + first + swappedSize(entry.type));
        return entry;
    }

    const ReadBytes& m_read;
    const bool m_isBigEndian;
};

/// One directory for the place `base`, followed by the values that do not fit into its entries.
QByteArray directoryAt(quint32 base, const ExifDirectory& directory)
{
    QByteArray entries = littleEndian(quint16(directory.size()));
    QByteArray values;
    const auto firstValue = quint32(base + 2 + directory.size() * entrySize + 4);
    for (const auto& [tag, entry] : directory) {
        entries += littleEndian(tag) + littleEndian(entry.type) + littleEndian(entry.count);
        if (entry.value.size() <= 4) {
            entries += entry.value.leftJustified(4, '\0');
        } else {
            entries += littleEndian(quint32(firstValue + values.size()));
            values += entry.value;
            values.resize(values.size() + values.size() % 2); // values begin at even offsets
        }
    }
    return entries + littleEndian(quint32(0)) + values;
}

} // namespace

ExifEntry ExifEntry::shortNumber(quint16 number) { return {3, 1, littleEndian(number)}; }

ExifEntry ExifEntry::longNumber(quint32 number) { return {4, 1, littleEndian(number)}; }

ExifEntry ExifEntry::text(const QByteArray& ascii)
{
    return {2, quint32(ascii.size() + 1), ascii + '\0'};
}

ExifEntry ExifEntry::bytes(quint16 type, const QByteArray& value)
{
    return {type, quint32(value.size()), value};
}

std::optional<Exif> parseExif(const ReadBytes& read)
{
    const QByteArray header = read(0, 8);
    const bool isBigEndian = header.startsWith("MM");
    const Parser parser(read, isBigEndian);
    if (header.size() != 8 || (!isBigEndian && !header.startsWith("II")) ||
        parser.number<quint16>(header, 2) != 42)
        return {};
    Exif exif;
    exif.image = parser.directory(parser.number<quint32>(header, 4));
    exif.photo = parser.pointedBy(exif.image, ExifTag::PhotoDirectory);
    exif.gps = parser.pointedBy(exif.image, ExifTag::GpsDirectory);
    exif.interoperability = parser.pointedBy(exif.photo, ExifTag::InteroperabilityDirectory);
    return exif;
}

QByteArray directoriesAt(quint32 base, const Exif& exif)
{
    ExifDirectory image = exif.image;
    ExifDirectory photo = exif.photo;
    const auto pointer = ExifEntry::longNumber(0); // sizes first: they do not depend on the offset
    if (!exif.interoperability.empty())
        photo[ExifTag::InteroperabilityDirectory] = pointer;
    if (!photo.empty())
        image[ExifTag::PhotoDirectory] = pointer;
    if (!exif.gps.empty())
        image[ExifTag::GpsDirectory] = pointer;

    const auto photoAt = quint32(base + directoryAt(0, image).size());
    const auto gpsAt = quint32(photoAt + (photo.empty() ? 0 : directoryAt(0, photo).size()));
    const auto lastAt = quint32(gpsAt + (exif.gps.empty() ? 0 : directoryAt(0, exif.gps).size()));
    if (!exif.interoperability.empty())
        photo[ExifTag::InteroperabilityDirectory] = ExifEntry::longNumber(lastAt);
    if (!photo.empty())
        image[ExifTag::PhotoDirectory] = ExifEntry::longNumber(photoAt);
    if (!exif.gps.empty())
        image[ExifTag::GpsDirectory] = ExifEntry::longNumber(gpsAt);

    QByteArray result = directoryAt(base, image);
    if (!photo.empty())
        result += directoryAt(photoAt, photo);
    if (!exif.gps.empty())
        result += directoryAt(gpsAt, exif.gps);
    if (!exif.interoperability.empty())
        result += directoryAt(lastAt, exif.interoperability);
    return result;
}

QByteArray exifBlock(const Exif& exif)
{
    constexpr quint32 first = 8;
    return QByteArray("II*\0", 4) + littleEndian(first) + directoriesAt(first, exif);
}
