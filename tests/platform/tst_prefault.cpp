// SPDX-License-Identifier: Apache-2.0
//
// Prefaulted memory keeps its contents, wherever the prefaulted ranges begin and end.
#include <platform/prefault.h>

#include <QtTest/QtTest>

#include <algorithm>
#include <memory>
#include <thread>

class PrefaultTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesWhatWasWritten_data()
    {
        constexpr size_t mib = 1 << 20;
        QTest::addColumn<size_t>("bytes");
        QTest::addColumn<size_t>("offset"); // of the block within the allocated memory
        QTest::addColumn<size_t>("step");   // between the prefaulted ranges
        QTest::newRow("nothing") << size_t(0) << size_t(0) << size_t(1);
        QTest::newRow("less than a page") << size_t(100) << size_t(60) << size_t(7);
        QTest::newRow("just too small") << 4 * mib - 1 << size_t(0) << mib;
        QTest::newRow("rows that end within pages")
            << 24 * mib + 12345 << size_t(16) << size_t(3 * 66'671);
        QTest::newRow("whole large pages") << 32 * mib << size_t(0) << 2 * mib;
        QTest::newRow("all at once") << 64 * mib << size_t(1) << 64 * mib;
    }
    void leavesWhatWasWritten()
    {
        QFETCH(const size_t, bytes);
        QFETCH(const size_t, offset);
        QFETCH(const size_t, step);
        for (int again = 0; again < 3; ++again) { // later blocks may get huge pages
            const std::unique_ptr<uchar[]> memory(new uchar[offset + bytes + 1]);
            uchar* const block = memory.get() + offset;
            const auto valueAt = [](size_t i) { return uchar(i / 4093 % 251 + 1); };
            block[bytes] = 255;
            const bool isWorthIt = Platform::isWorthPrefaulting(block, bytes);
            QVERIFY(!isWorthIt || bytes >= 4 << 20);
            const auto write =
                [&](size_t first) { // every second range; ranges share the pages at their ends
                    for (size_t at = first * step; at < bytes; at += 2 * step) {
                        const size_t end = std::min(at + step, bytes);
                        if (isWorthIt)
                            Platform::prefault(block + at, end - at);
                        for (size_t i = at; i < end; ++i)
                            block[i] = valueAt(i);
                    }
                };
            std::thread other(write, 1);
            write(0);
            other.join();
            Platform::prefault(block, bytes);
            size_t differing = block[bytes] == 255 ? 0 : 1;
            for (size_t i = 0; i < bytes; ++i)
                differing += block[i] != valueAt(i);
            QCOMPARE(differing, size_t(0));
            QVERIFY(!Platform::isWorthPrefaulting(block, bytes)); // the pages are there already
        }
    }
};

QTEST_APPLESS_MAIN(PrefaultTest)
#include "tst_prefault.moc"
