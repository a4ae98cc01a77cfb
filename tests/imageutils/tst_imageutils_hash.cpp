// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <support/log.h>

#include <QtCore/QDataStream>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>
#include <QtCore/QSet>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <cstdio>
#include <numeric>

namespace {

// The rules again, word for word.
quint64 step(quint64 a, quint64 b)
{
    const quint64 s = a + b;
    const quint64 v = b + 12 * s * (s + 1);
    return a == b ? a : quint64(qint64(qint32((v & 0xFFFFFFFF) ^ (v >> 32))));
}

quint64 mix(quint64 x)
{
    for (int i = 0; i < 2; ++i)
        x = (x ^ (x >> 32)) * 0xD6E8FEB86659FD93;
    return x ^ (x >> 32);
}

quint64 list(std::initializer_list<quint64> elements)
{
    return std::accumulate(elements.begin(), elements.end(), quint64(0), step);
}

quint64 sequence(std::initializer_list<quint64> elements)
{
    const auto next = [](quint64 h, quint64 e) {
        return h ^ (e + 0x9E3779B9 + (h << 6) + (h >> 2));
    };
    return std::accumulate(elements.begin(), elements.end(), quint64(0), next);
}

quint64 text(QStringView string) { return qHash(string, 0); }

quint64 streamed(const QVariant& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return qHashBits(bytes.constData(), std::size_t(bytes.size()), 0);
}

/// One value of each kind, its hash, that as the value of a map (of the list it converts to), and
/// how many lines the fallback to the data stream writes for both.
struct Sample
{
    const char* name;
    QVariant value;
    quint64 hash;
    quint64 hashInMap = hash;
    int lines = 0;
    int linesInMap = lines;
};

QList<Sample> samples()
{
    const QVariant letter = QVariant::fromValue('a');
    const QVariant object = QVariant::fromValue<QObject*>(nullptr); // has no stream operators
    const QVariantHash hash{{"a", QVariantMap{{"b", 1}, {"c", QVariantList{"d", QVariant()}}}}};
    const QVariant set = QVariant::fromValue(QSet<QString>{"a"});
    const QVariant ints = QVariant::fromValue(QList<int>{1, 2});
    const QJsonArray json{1, "a", QJsonArray{true}};
    return {
        {"invalid", QVariant(), 0},
        {"true", true, mix(1)},
        {"int", -7, mix(quint64(-7))},
        {"uint", 4000000000u, mix(4000000000)},
        {"qlonglong", qlonglong(-5000000000), mix(quint64(-5000000000))},
        {"qulonglong", ~0ULL, mix(~0ULL)},
        {"double", -1.5, qHash(-1.5, 0)},
        {"character", QChar(u'x'), mix('x')},
        {"map", QVariantMap{{"b", 1}, {"a", "x"}},
         list({text(u"a"), list({mix('x')}), text(u"b"), mix(1)})},
        {"list", QVariantList{1, "two", QVariantList{}}, list({mix(1), text(u"two"), 0})},
        {"string", "ab", text(u"ab"), list({mix('a'), mix('b')})},
        {"empty string", QString(), text(u"")},
        {"string list", QStringList{"ab", ""}, sequence({text(u"ab"), text(u"")}),
         list({text(u"ab"), text(u"")})},
        {"empty string list", QStringList{}, 0},
        {"bytes", QByteArray("a"), qHash(QByteArrayView("a"), 0), list({streamed(letter)}), 0, 1},
        {"rectangle", QRect(-3, 4, 50, 60), sequence({mix(quint64(-3)), mix(46), mix(4), mix(63)})},
        {"size", QSize(-1, 7), sequence({mix(quint64(-1)), mix(7)})},
        {"point", QPoint(3, -4), qHash(QPoint(3, -4), 0)},
        {"float", -2.25f, mix(0xC0100000)},
        {"minus zero", -0.0f, 0},
        {"list of int", ints, streamed(ints), list({mix(1), mix(2)}), 1, 0},
        {"JSON array", json, streamed(json), list({mix(1), text(u"a"), list({mix(1)})}), 1, 0},
        {"letter", letter, streamed(letter), streamed(letter), 1},
        {"hash", hash, streamed(hash), streamed(hash), 1},
        {"set", set, streamed(set), list({text(u"a")}), 1, 0},
        {"object", object, streamed(object), streamed(object), 1}};
}

/// The key of all samples, and of hashes and sets, whose order is another in every process.
quint64 keyOfAll()
{
    const QVariantHash hash{{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}, {"e", 1}};
    const QVariant set = QVariant::fromValue(QSet<QString>{"a", "b", "c", "d", "e"});
    QVariantMap map{{"hash", hash}, {"set", set}, {"in a hash", QVariantHash{{"a", hash}}}};
    map["in lists"] = QVariantHash{{"a", QVariantList{set, QVariantList{hash}}}};
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
    void followsTheRules();
    void givesKnownNumbers();
    void nestsToAnyDepth();
    void isTheSameInEveryProcess();
};

void ImageUtilsHashTest::followsTheRules()
{
    const QRegularExpression line("^warning: Type \\d+ not hashable. Using data stream fallback.$");
    for (const auto& [name, value, hash, hashInMap, lines, linesInMap] : samples()) {
        TestSupport::LogCapture log;
        QVERIFY2(NImageUtils::hashVariant(value) == hash, name);
        QVERIFY2(NImageUtils::hashVariant(QVariantList{value, 1, value}) ==
                     list({hash, mix(1), hash}),
                 name);
        QVERIFY2(log.takeTexts().filter(line).size() == 3 * lines, name);
        QVERIFY2(NImageUtils::hashParams({{"key", value}, {"Key", 1}, {"kez", value}}) ==
                     list({text(u"Key"), mix(1), text(u"key"), hashInMap, text(u"kez"), hashInMap}),
                 name);
        QVERIFY2(log.takeTexts().filter(line).size() == 2 * linesInMap, name);
    }
}

void ImageUtilsHashTest::givesKnownNumbers()
{
    QCOMPARE(NImageUtils::hashVariant(1), 0x4179B061E0C0E0D0u);
    QCOMPARE(NImageUtils::hashVariant(QVariantList{1, 2}), 0xFFFFFFFF8406A569u);
    QCOMPARE(NImageUtils::hash(5, QVariantMap()), 0x168u); // 12 x 5 x 6
    if (qstrcmp(qVersion(), "6.4.2") == 0)
        QCOMPARE(NImageUtils::hashParams({{"a", "ab"}}), 0x15B76194u);
}

void ImageUtilsHashTest::nestsToAnyDepth()
{
    QVariant nested = 1;
    quint64 expected = mix(1);
    for (int level = 0; level < 10000; ++level) {
        nested = QVariantMap{{"k", QVariantList{nested}}};
        expected = list({text(u"k"), list({expected})});
    }
    quint64 hash = 0;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { hash = NImageUtils::hashVariant(nested); }));
    thread->setStackSize(256 * 1024); // 13 bytes for each level
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(hash, expected);
}

void ImageUtilsHashTest::isTheSameInEveryProcess()
{
    for (const char* seed : {"", "0"}) { // empty: Qt's seed is random
        qputenv("QT_HASH_SEED", seed);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {"--key"});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput(), QByteArray::number(keyOfAll()));
    }
}

int main(int argc, char** argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--key") == 0)
        return std::printf("%llu", keyOfAll()) < 0;
    QCoreApplication application(argc, argv);
    ImageUtilsHashTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_imageutils_hash.moc"
