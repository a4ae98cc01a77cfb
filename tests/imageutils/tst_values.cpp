// SPDX-License-Identifier: Apache-2.0
#include <imageutils/bytevalue.h>
#include <imageutils/mathutils.h>

#include <QtTest/QTest>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

/// Amounts of storage, and the geometry of brushes and points.
class ValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void amountsAreBytes_data();
    void amountsAreBytes();
    void amountsCompareByTheirBytes();
    void brushesFollowTheImage_data();
    void brushesFollowTheImage();
    void pointsTurnInSinglePrecision();
    void distancesAreSquared();
};

void ValuesTest::amountsAreBytes_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<ByteType>("type");
    QTest::addColumn<qint64>("bytes");
    const auto row = [](const char* name, double value, ByteType type, qint64 bytes) {
        QTest::newRow(name) << value << type << bytes;
    };
    row("decimal kilobyte", 1, ByteType::Kilobytes, 1000);
    row("product is a little less", 8.2, ByteType::Gigabytes, 8199999999);
    row("fraction dropped", 1.005, ByteType::Kilobytes, 1004);
    row("negative, towards zero", -1.0005, ByteType::Kilobytes, -1000);
    row("half a byte", 0.5, ByteType::Bytes, 0);
    row("megabytes", 2.5, ByteType::Megabytes, 2500000);
    row("terabytes", 3, ByteType::Terabytes, 3000000000000);
    row("unknown unit", 7, ByteType(5), 0);
    row("unknown negative unit", infinity, ByteType(-1), 0);
    row("not a number", notANumber, ByteType::Bytes, 0);
    row("infinite", infinity, ByteType::Kilobytes, LLONG_MAX);
    row("2^63", 9223372036854775808.0, ByteType::Bytes, LLONG_MAX);
    row("largest double below", 9223372036854774784.0, ByteType::Bytes, 9223372036854774784);
    row("-2^63", -9223372036854775808.0, ByteType::Bytes, LLONG_MIN);
    row("far below", -1e300, ByteType::Terabytes, LLONG_MIN);
}

void ValuesTest::amountsAreBytes()
{
    QFETCH(double, value);
    QFETCH(ByteType, type);
    QFETCH(qint64, bytes);
    ByteValue amount(1, ByteType::Bytes);
    amount = ByteValue(value, type);
    QCOMPARE(qint64(amount), bytes);
}

void ValuesTest::amountsCompareByTheirBytes()
{
    const auto compare = [](const ByteValue& a, const ByteValue& b, int order) {
        return (a == b) == (order == 0) && (a != b) == (order != 0) && (a < b) == (order < 0) &&
               (a <= b) == (order <= 0) && (a > b) == (order > 0) && (a >= b) == (order >= 0);
    };
    const ByteValue megabyte(1, ByteType::Megabytes);
    QVERIFY(compare(megabyte, ByteValue(1000, ByteType::Kilobytes), 0));
    QVERIFY(compare(megabyte, ByteValue(999999, ByteType::Bytes), 1));
    QVERIFY(compare(ByteValue(-1, ByteType::Terabytes), megabyte, -1));
}

void ValuesTest::brushesFollowTheImage_data()
{
    QTest::addColumn<float>("brush");
    QTest::addColumn<QSize>("image");
    QTest::addColumn<int>("extent");
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QRect>("bounds");
    const auto row = [](float brush, QSize image, int extent, QPoint position, QRect bounds) {
        QTest::addRow("%g on %dx%d at %d,%d", double(brush), image.width(), image.height(),
                      position.x(), position.y())
            << brush << image << extent << position << bounds;
    };
    const QSize large(4000, 3000);
    row(10, large, 24, {100, 100}, {72, 72, 56, 56});
    row(10, large, 24, {0, 0}, {0, 0, 28, 28});
    row(100, large, 500, {2000, 1500}, {1493, 993, 1014, 1014}); // margin 507
    row(49.9f, large, 125, {3999, 10}, {3869, 0, 131, 140});     // margin 130
    row(50, large, 125, {-1, 10}, {});
    row(75, large, 313, {10, -1}, {});
    row(1, large, 1, {4010, 10}, {4005, 5, -5, 10});
    row(20, {1024, 768}, 13, {500, 500}, {483, 483, 34, 34});
    row(60, {1024, 768}, 51, {500, 500}, {445, 445, 110, 110});
    row(0.5f, {100, 100}, 0, {5, 5}, {1, 1, 8, 8});
    row(100, {31, 20}, 0, {5, 5}, {1, 1, 8, 8});
    row(0, large, 0, {5, 5}, {});
    row(-3, large, 0, {5, 5}, {1, 1, 8, 8});
    row(float(notANumber), large, 0, {5, 5}, {});
    row(10, {0, 3000}, 18, {5, 5}, {});
    row(FLT_MAX, large, INT_MAX, {5, 5}, {0, 0, 4000, 3000});
    row(float(infinity), {31, 20}, 0, {5, 5}, {1, 1, 8, 8});
    row(float(infinity), {INT_MAX, INT_MAX}, INT_MAX, {INT_MAX, INT_MAX}, {0, 0, INT_MAX, INT_MAX});
    row(10, large, 24, {INT_MAX, 0}, {INT_MAX - 28, 0, 4000 - (INT_MAX - 28), 28});
}

void ValuesTest::brushesFollowTheImage()
{
    QFETCH(float, brush);
    QFETCH(QSize, image);
    QFETCH(int, extent);
    QFETCH(QPoint, position);
    QFETCH(QRect, bounds);
    QCOMPARE(NMathUtils::mapBrushSize(brush, image), extent);
    QCOMPARE(NMathUtils::getBounds(position, brush, image), bounds);
}

void ValuesTest::pointsTurnInSinglePrecision()
{
    const auto bits = [](double value) { return std::bit_cast<quint64>(value); };
    std::mt19937 random(1);
    std::uniform_real_distribution<double> anywhere(-1000, 1000);
    for (int i = 0; i < 1000; ++i) {
        const QPointF point(anywhere(random), anywhere(random));
        const QPointF center(anywhere(random), anywhere(random));
        const float angle = float(anywhere(random) / 100);
        const QPointF turned = NMathUtils::rotatePoint(point, angle, center);
        const double dx = point.x() - center.x();
        const double dy = point.y() - center.y();
        // One after the other, so that no vectoriser drops the rounding.
        const volatile float x = float(dx * double(cosf(angle)) - dy * double(sinf(angle)));
        const volatile float y = float(dx * double(sinf(angle)) + dy * double(cosf(angle)));
        QCOMPARE(bits(turned.x()), bits(double(x) + center.x()));
        QCOMPARE(bits(turned.y()), bits(double(y) + center.y()));
    }
    const QPointF odd(0.1, -0.0);
    const QPointF same = NMathUtils::rotatePoint(odd, -0.0f, {7, 7});
    QVERIFY(bits(same.x()) == bits(odd.x()) && bits(same.y()) == bits(odd.y()));
    // From +x towards +y.
    const QPointF quarter = NMathUtils::rotatePoint({10, 0}, float(std::acos(-1) / 2), {0, 0});
    QVERIFY(std::abs(quarter.x()) < 1e-6 && quarter.y() == 10.0);
}

void ValuesTest::distancesAreSquared()
{
    QCOMPARE(NMathUtils::calcDistanceSquared({0, 0}, {3, 4}), 25.0f);
    QCOMPARE(NMathUtils::calcDistanceSquared({INT_MIN, 0}, {INT_MAX, 0}),
             4294967296.0f * 4294967296.0f);
}

QTEST_GUILESS_MAIN(ValuesTest)
#include "tst_values.moc"
