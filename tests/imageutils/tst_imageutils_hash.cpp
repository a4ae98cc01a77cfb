// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <support/log.h>

#include <QtCore/QDataStream>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <cstdio>
#include <cstring>

struct WithoutStreamOperators
{
    int value = 3;
};
Q_DECLARE_METATYPE(WithoutStreamOperators)

namespace {

// The rules again, word for word, by recursion and with a list made of whatever converts to one.
quint64 step(quint64 a, quint64 b)
{
    if (a == b)
        return a;
    const quint64 s = a + b;
    const quint64 v = b + 12 * s * (s + 1);
    return quint64(qint64(qint32((v & 0xFFFFFFFF) ^ (v >> 32))));
}

quint64 mix(quint64 x)
{
    for (int i = 0; i < 2; ++i) {
        x ^= x >> 32;
        x *= 0xD6E8FEB86659FD93;
    }
    return x ^ (x >> 32);
}

quint64 inSequence(const QList<quint64>& elements)
{
    quint64 h = 0;
    for (const quint64 e : elements)
        h ^= e + 0x9E3779B9 + (h << 6) + (h >> 2);
    return h;
}

quint64 mapHash(const QVariantMap& map);
quint64 listHash(const QVariantList& list);

quint64 valueHash(const QVariant& value)
{
    const auto signedMix = [](int number) { return mix(quint64(qint64(number))); };
    QByteArray bytes;
    QList<quint64> elements;
    switch (value.typeId()) {
    case 0:
        return 0;
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
        return mix(value.value<quint64>());
    case 6:
        return qHash(value.toDouble(), 0);
    case 7:
        return mix(value.toChar().unicode());
    case 8:
        return mapHash(value.toMap());
    case 9:
        return listHash(value.toList());
    case 10:
        return qHash(QStringView(value.toString()), 0);
    case 11:
        for (const QString& string : value.toStringList())
            elements.append(valueHash(string));
        return inSequence(elements);
    case 12:
        return qHash(QByteArrayView(value.toByteArray()), 0);
    case 19: {
        const QRect r = value.toRect();
        return inSequence(
            {signedMix(r.left()), signedMix(r.right()), signedMix(r.top()), signedMix(r.bottom())});
    }
    case 21:
        return inSequence({signedMix(value.toSize().width()), signedMix(value.toSize().height())});
    case 25:
        return qHash(value.toPoint(), 0);
    case 38: {
        const float number = value.toFloat() + 0.0f;
        quint32 bits;
        std::memcpy(&bits, &number, 4);
        return mix(bits);
    }
    default: {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << value;
        return qHashBits(bytes.constData(), std::size_t(bytes.size()), 0);
    }
    }
}

quint64 listHash(const QVariantList& list)
{
    quint64 h = 0;
    for (const QVariant& element : list)
        h = step(h, valueHash(element));
    return h;
}

quint64 mapHash(const QVariantMap& map)
{
    quint64 h = 0;
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        h = step(h, qHash(QStringView(entry.key()), 0));
        const QVariantList list = entry.value().toList();
        h = step(h, list.isEmpty() ? valueHash(entry.value()) : listHash(list));
    }
    return h;
}

/// One value of each kind, and how many lines its road through the data stream writes by itself and
/// as the value of a map.
struct Sample
{
    const char* name;
    QVariant value;
    int lines = 0;
    int linesInMap = lines;
};

QList<Sample> samples()
{
    return {{"invalid", QVariant()},
            {"true", true},
            {"int", -7},
            {"uint", 4000000000u},
            {"qlonglong", qlonglong(-5000000000)},
            {"qulonglong", ~0ULL},
            {"double", -1.5},
            {"character", QChar(u'x')},
            {"map", QVariantMap{{"b", 1}, {"a", QVariantList{2, "x"}}}},
            {"list", QVariantList{1, "two", QVariantList{}, QVariantMap{}}},
            {"empty list", QVariantList{}},
            {"string", QStringLiteral("ab")},
            {"empty string", QString()},
            {"string list", QStringList{"ab", "", "c"}},
            {"empty string list", QStringList{}},
            {"bytes", QByteArray("abc"), 0, 3},
            {"no bytes", QByteArray()},
            {"rectangle", QRect(-3, 4, 50, 60)},
            {"size", QSize(-1, 7)},
            {"point", QPoint(3, -4)},
            {"float", -2.25f},
            {"minus zero", -0.0f},
            {"rectangle of doubles", QRectF(1, 2, 3, 4), 1},
            {"short", QVariant::fromValue(short(5)), 1},
            {"list of int", QVariant::fromValue(QList<int>{1, 2}), 1, 0},
            {"list of byte arrays", QVariant::fromValue(QByteArrayList{"a"}), 1, 0},
            {"JSON array", QJsonArray{1, "a", QJsonArray{true}}, 1, 0},
            {"hash", QVariantHash{{"a", 1}}, 1},
            {"without stream operators", QVariant::fromValue(WithoutStreamOperators()), 1},
            {"object", QVariant::fromValue<QObject*>(nullptr), 1}};
}

/// The key of all samples that no hash order of Qt's own decides.
quint64 keyOfAll()
{
    QVariantMap map;
    for (const Sample& sample : samples())
        map[sample.name] = QVariantList{sample.value, QVariantMap{{"value", sample.value}}};
    return NImageUtils::hash(17, map);
}

} // namespace

/// Keys of parameter sets, against the rules written out once more.
class ImageUtilsHashTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheRules_data();
    void followsTheRules();
    void givesKnownNumbers();
    void nestsToAnyDepth();
    void isTheSameInEveryProcess();
};

void ImageUtilsHashTest::followsTheRules_data()
{
    QTest::addColumn<Sample>("sample");
    for (const Sample& sample : samples())
        QTest::newRow(sample.name) << sample;
}

void ImageUtilsHashTest::followsTheRules()
{
    QFETCH(Sample, sample);
    const QVariantMap map{{"key", sample.value}, {"Key", 1}, {"kez", sample.value}};
    const QVariantList list{sample.value, 1, sample.value};
    TestSupport::LogCapture log;
    const quint64 expected = valueHash(sample.value);
    const quint64 expectedOfMap = mapHash(map);
    const quint64 expectedOfList = listHash(list);
    log.take(); // Qt's own

    const auto ourLines = [&] {
        const QStringList lines = log.takeTexts();
        return lines
            .filter(QRegularExpression("^warning: Type [0-9]+ not hashable. Using data stream "
                                       "fallback.$"))
            .size();
    };
    QCOMPARE(NImageUtils::hashVariant(sample.value), expected);
    QCOMPARE(ourLines(), sample.lines);
    QCOMPARE(NImageUtils::hashParams(map), expectedOfMap);
    QCOMPARE(ourLines(), 2 * sample.linesInMap);
    QCOMPARE(NImageUtils::hashVariant(list), expectedOfList);
    QCOMPARE(ourLines(), 2 * sample.lines);
}

void ImageUtilsHashTest::givesKnownNumbers()
{
    QCOMPARE(NImageUtils::hashVariant(1), 0x4179B061E0C0E0D0u);
    QCOMPARE(NImageUtils::hashVariant(QVariantList{1, 2}), 0xFFFFFFFF8406A569u);
    QCOMPARE(NImageUtils::hash(0, QVariantMap()), 0u);
    QCOMPARE(NImageUtils::hash(5, QVariantMap()), 0x168u); // 12 x 5 x 6
    QCOMPARE(NImageUtils::hashVariant(0.0f), 0u);
    if (qstrcmp(qVersion(), "6.4.2") == 0)
        QCOMPARE(NImageUtils::hashParams({{"a", "ab"}}), 0x15B76194u);
}

void ImageUtilsHashTest::nestsToAnyDepth()
{
    QVariant nested = 1;
    quint64 expected = mix(1);
    for (int level = 0; level < 10000; ++level) {
        nested = QVariantMap{{"k", QVariantList{nested}}};
        const quint64 ofList = step(0, expected);
        expected = step(step(0, qHash(QStringView(u"k"), 0)), ofList);
    }
    quint64 hash = 0;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { hash = NImageUtils::hashVariant(nested); }));
    thread->setStackSize(256 * 1024); // 13 bytes for each level
    thread->start();
    thread->wait();
    QCOMPARE(hash, expected);
}

void ImageUtilsHashTest::isTheSameInEveryProcess()
{
    for (const char* seed : {"", "0"}) { // empty: Qt's seed is random
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_HASH_SEED", seed);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {"--key"});
        QVERIFY(process.waitForFinished());
        const TestSupport::LogCapture log;
        QCOMPARE(process.readAllStandardOutput(), QByteArray::number(keyOfAll()));
    }
}

int main(int argc, char** argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--key") == 0) {
        std::fputs(QByteArray::number(keyOfAll()).constData(), stdout);
        return 0;
    }
    QCoreApplication application(argc, argv);
    ImageUtilsHashTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_imageutils_hash.moc"
