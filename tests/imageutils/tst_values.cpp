// SPDX-License-Identifier: Apache-2.0
#include <imageutils/bytevalue.h>
#include <imageutils/exceptions_p.h>
#include <imageutils/mathutils.h>

#include <QtTest/QTest>

#include <opencv2/core.hpp>

#include <climits>
#include <cmath>
#include <functional>
#include <ios>
#include <random>
#include <vector>

/// Amounts of storage, the geometry of brushes and points, and what exceptions become.
class ValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void amountsAreBytes();
    void amountsCompareByTheirBytes();
    void brushesFollowTheImage();
    void pointsTurnInSinglePrecision();
    void exceptionsBecomeNeutralResults();
};

void ValuesTest::amountsAreBytes()
{
    const auto bytes = [](double value, ByteType type) { return qint64(ByteValue(value, type)); };
    QCOMPARE(bytes(0.5, ByteType::Bytes), 0);
    QCOMPARE(bytes(-1.0005, ByteType::Kilobytes), -1000); // towards zero
    QCOMPARE(bytes(2.5, ByteType::Megabytes), 2500000);
    QCOMPARE(bytes(8.2, ByteType::Gigabytes), 8199999999); // the product is a little less
    QCOMPARE(bytes(3, ByteType::Terabytes), 3000000000000);
    QCOMPARE(bytes(7, ByteType(5)), 0);
    QCOMPARE(bytes(HUGE_VAL, ByteType(-1)), 0);
    QCOMPARE(bytes(9223372036854774784.0, ByteType::Bytes), 9223372036854774784);
    QCOMPARE(bytes(9223372036854775808.0, ByteType::Bytes), LLONG_MAX);
    QCOMPARE(bytes(-1e300, ByteType::Terabytes), LLONG_MIN);
}

void ValuesTest::amountsCompareByTheirBytes()
{
    const auto compare = [](const ByteValue& a, const ByteValue& b, int order) {
        return (a == b) == (order == 0) && (a != b) == (order != 0) && (a < b) == (order < 0) &&
               (a <= b) == (order <= 0) && (a > b) == (order > 0) && (a >= b) == (order >= 0);
    };
    ByteValue megabyte(1, ByteType::Bytes);
    megabyte = ByteValue(1, ByteType::Megabytes);
    QVERIFY(compare(megabyte, ByteValue(1000, ByteType::Kilobytes), 0));
    QVERIFY(compare(megabyte, ByteValue(999999, ByteType::Bytes), 1));
    QVERIFY(compare(ByteValue(-1, ByteType::Terabytes), megabyte, -1));
}

void ValuesTest::brushesFollowTheImage()
{
    const auto check = [](float brush, QSize image, int extent, QPoint position, QRect bounds) {
        QCOMPARE(NMathUtils::mapBrushSize(brush, image), extent);
        QCOMPARE(NMathUtils::getBounds(position, brush, image), bounds);
    };
    const QSize large(4000, 3000);
    check(10, large, 24, {100, 100}, {72, 72, 56, 56});
    check(100, large, 500, {2000, 1500}, {1493, 993, 1014, 1014}); // margin 507
    check(49.9f, large, 125, {3999, 10}, {3869, 0, 131, 140});     // margin 130
    check(50, large, 125, {-1, 10}, {});
    check(75, large, 313, {10, -1}, {});
    check(1, large, 1, {4010, 10}, {4005, 5, -5, 10});
    check(0.5f, {100, 100}, 0, {5, 5}, {1, 1, 8, 8});
    check(0, large, 0, {5, 5}, {});
    check(-3, large, 0, {5, 5}, {1, 1, 8, 8});
    check(std::nanf(""), large, 0, {5, 5}, {});
    check(10, {0, 3000}, 18, {5, 5}, {});
    check(HUGE_VALF, {31, 20}, 0, {5, 5}, {1, 1, 8, 8});
    const QSize largest(INT_MAX, INT_MAX);
    check(HUGE_VALF, largest, INT_MAX, {INT_MAX, 9}, {0, 0, INT_MAX, INT_MAX});
}

void ValuesTest::pointsTurnInSinglePrecision()
{
    const auto same = [](const QPointF& a, const QPointF& b) { // QPointF's == is fuzzy
        return a.x() == b.x() && a.y() == b.y();
    };
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
        QVERIFY(same(turned, {double(x) + center.x(), double(y) + center.y()}));
    }
    const QPointF odd(0.1, -0.0);
    QVERIFY(same(NMathUtils::rotatePoint(odd, -0.0f, {7, 7}), odd));
    QCOMPARE(NMathUtils::calcDistanceSquared({0, 0}, {3, 4}), 25.0f);
    QCOMPARE(NMathUtils::calcDistanceSquared({INT_MIN, 0}, {INT_MAX, 0}),
             4294967296.0f * 4294967296.0f);
}

void ValuesTest::exceptionsBecomeNeutralResults()
{
    QCOMPARE(neutralOnException("f", [] { return 7; }), 7);
    const auto line = [](const char* reason, const std::function<void()>& thrower) {
        QTest::ignoreMessage(QtWarningMsg, reason);
        neutralOnException("f", thrower);
        QTest::ignoreMessage(QtWarningMsg, reason);
        const auto value = [&thrower] { return thrower(), std::vector<int>{1}; };
        QCOMPARE(neutralOnException("f", value, {5}), std::vector<int>{5});
    };
    const char* const noMemory = "f: not enough memory";
    line(noMemory, [] { throw std::bad_alloc(); });
    line(noMemory, [] { CV_Error(cv::Error::StsNoMem, "Failed to allocate 9 bytes"); });
    line("f: a size in the data is too large", [] { std::vector<int>().resize(std::size_t(-1)); });
    line("f: reading or writing failed", [] { throw std::ios_base::failure("x"); });
    line("f: the data is damaged or of an unsupported kind", [] { CV_Assert(false); });
    line("f: the data is damaged or of an unsupported kind", [] { throw 1; });
}

QTEST_GUILESS_MAIN(ValuesTest)
#include "tst_values.moc"
