// SPDX-License-Identifier: Apache-2.0
//
// Nested values of many types, made from any bytes: a value has the same key however the entries of
// its hashes were inserted.
#include <imageutils/imageutils.h>

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSet>
#include <QtCore/QSize>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

/// Makes values from bytes; with `isReversed` the entries of hashes are inserted backwards.
class Maker
{
public:
    Maker(const std::uint8_t* data, std::size_t size, bool isReversed)
        : m_data(data), m_end(data + size), m_isReversed(isReversed)
    {}

    QVariant value(int level = 0)
    {
        constexpr int deepest = 40;
        const int number = next() | next() << 8;
        switch (level < deepest ? next() % 12 : 0) {
        case 1:
            return QString(next(), QChar(number));
        case 2:
            return QByteArray(next(), char(number));
        case 3:
            return QRect(number, next(), next(), next());
        case 4:
            return double(number) / (next() + 1);
        case 5:
            return QVariant::fromValue(
                QSet<QString>{QString(QChar(number)), QString(QChar(next()))});
        case 6:
            return QStringList(next() % 4, QString::number(number));
        case 7:
        case 8:
            return list(level);
        case 9:
            return QVariantMap{{QString(QChar(number)), value(level + 1)}, {"k", value(level + 1)}};
        case 10:
        case 11:
            return hash(level);
        default:
            return number;
        }
    }

private:
    int next() { return m_data < m_end ? *m_data++ : 0; }

    QVariantList list(int level)
    {
        QVariantList elements;
        for (int count = next() % 8; count > 0; --count)
            elements.append(value(level + 1));
        return elements;
    }

    QVariantHash hash(int level)
    {
        std::vector<std::pair<QString, QVariant>> entries;
        for (int count = next() % 8; count > 0; --count) // keys that differ
            entries.emplace_back(QString::number(count) + QChar(next()), value(level + 1));
        if (m_isReversed)
            std::reverse(entries.begin(), entries.end());
        QVariantHash hash;
        for (const auto& [key, element] : entries)
            hash.insert(key, element);
        return hash;
    }

    const std::uint8_t* m_data;
    const std::uint8_t* m_end;
    bool m_isReversed;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QVariant value = Maker(data, size, false).value();
    const QVariant same = Maker(data, size, true).value();
    if (NImageUtils::hashVariant(value) != NImageUtils::hashVariant(same) ||
        NImageUtils::hashParams({{"k", value}}) != NImageUtils::hashParams({{"k", same}}))
        std::abort();
    return 0;
}
