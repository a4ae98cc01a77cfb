// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>
#include <imageutils/kernels/simd.h>

#include <QtTest/QTest>

#include <cmath>
#include <cstring>
#include <random>
#include <utility>

namespace {

template<typename T>
std::vector<T> noise(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<T> values(count);
    for (T& value : values)
        value = std::is_floating_point_v<T> ? T(double(random()) / 4e9) : T(random());
    return values;
}

template<typename T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b)
{
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

template<typename T>
bool findsEveryDifference(int channels)
{
    for (std::size_t pixels = 1; pixels <= 70; ++pixels) { // more than two vectors of bytes
        std::vector<T> row(pixels * std::size_t(channels) + 1, T(3));
        for (std::size_t i = 1; i < row.size(); ++i) // neighbours may differ
            row[i] = T((i - 1) / std::size_t(channels) % 3);
        if (!Kernels::isRowMonochrome(&row[1], pixels, channels))
            return false;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const T value = std::exchange(row[i], T(200));
            if (Kernels::isRowMonochrome(&row[1], pixels, channels))
                return false;
            row[i] = value;
        }
    }
    return true;
}

} // namespace

/// Compares the SIMD loops of every instruction set that this CPU has with the scalar loops. The
/// memory around the output is compared too.
class KernelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void resamplesRows();
    void resamplesColumns();
    void splitsAndMerges();
    void makesMonochrome();
    void findsEverySingleDifference();
    void encodesAndDecodes();
};

void KernelsTest::initTestCase_data()
{
    QTest::addColumn<QByteArray>("set");
    for (const char* const set : Kernels::simdInstructionSets())
        QTest::newRow(set) << QByteArray(set);
}

void KernelsTest::init()
{
    QFETCH_GLOBAL(QByteArray, set);
    Kernels::useSimdInstructionSet(set);
    QCOMPARE(QByteArray(Kernels::simdInstructionSet()),
             set); // answered by code compiled for that set
}

void KernelsTest::resamplesRows()
{
    std::vector<float> pixels = noise<float>(20 * 3 * 200 + 1);
    for (const int samples : {1, 2, 3, 199}) {
        pixels[std::size_t(samples) * 7] = samples < 3 ? INFINITY : 0.5f;
        for (const float scale : {2.3f, 0.5f, 0.011f, 0.0009f}) {
            for (int length = 1; length < 133; length += length < 9 ? 1 : 61) {
                int radius = 0;
                const auto weights = Kernels::computeWeights(length, 0, 0.5f, scale, radius);
                const auto centres = Kernels::centreSamples(0, length, scale, samples);
                const Kernels::Filter filter = {centres.data(), weights.data(), 2 * radius + 1,
                                                length};
                const int rows = length < 9 ? 19 - length : length / 61;
                std::vector<float> scalar(19 * 3 * 133, -7), simd = scalar;
                std::vector<float> buffer(Kernels::rowBufferFloats(samples, filter));
                std::vector<const float*> from;
                std::vector<float*> toScalar, toSimd;
                for (std::size_t row = 0; row < std::size_t(rows); ++row) {
                    from.push_back(&pixels[1 + row * std::size_t(samples) * 3]);
                    toScalar.push_back(&scalar[3 + row * std::size_t(length + 1) * 3]);
                    toSimd.push_back(&simd[3 + row * std::size_t(length + 1) * 3]);
                }
                Kernels::Scalar::interpolateRows(from.data(), rows, samples, filter,
                                                 toScalar.data(), buffer.data());
                Kernels::interpolateRows(from.data(), rows, samples, filter, toSimd.data(),
                                         buffer.data());
                QVERIFY(sameBits(scalar, simd));
            }
        }
    }
}

void KernelsTest::resamplesColumns()
{
    std::vector<float> pixels = noise<float>(60 * 210);
    pixels[4000] = INFINITY;
    int radius = 0;
    const auto weights = Kernels::computeWeights(11, 0, 0.5f, 0.3f, radius);
    const auto centres = Kernels::centreSamples(0, 11, 0.3f, 60 - 2 * radius);
    const Kernels::Filter filter = {centres.data(), weights.data(), 2 * radius + 1, 11};
    std::vector<const float*> rows;
    for (std::size_t row = 0; row < 60; ++row)
        rows.push_back(&pixels[1 + row * 210]);
    for (std::size_t width = 1; width <= 205; ++width) {
        std::vector<float> scalar(12 * 207, -7), simd = scalar;
        Kernels::Scalar::interpolateColumns(rows.data(), width, filter, &scalar[1], width + 2);
        Kernels::interpolateColumns(rows.data(), width, filter, &simd[1], width + 2);
        QVERIFY(sameBits(scalar, simd));
    }
}

void KernelsTest::splitsAndMerges()
{
    const std::vector<float> pixels = noise<float>(4 * 20 + 1);
    for (std::size_t count = 0; count <= 20; ++count) {
        std::vector<float> scalar(3 * 20 + 2, -7), simd = scalar, alpha = scalar, merged = pixels;
        Kernels::Scalar::splitRow(&pixels[1], count, &scalar[1], &alpha[1]);
        std::vector<float> alphaOfSimd = scalar;
        Kernels::splitRow(&pixels[1], count, &simd[1], &alphaOfSimd[0]);
        QVERIFY(sameBits(scalar, simd));
        QVERIFY(std::memcmp(&alpha[1], &alphaOfSimd[0], count * sizeof(float)) == 0);
        std::fill_n(merged.begin() + 1, 4 * count, -7.0f);
        Kernels::mergeRow(&scalar[1], &alpha[1], count, &merged[1]);
        QVERIFY(sameBits(merged, pixels));
    }
}

void KernelsTest::makesMonochrome()
{
    std::vector<std::uint16_t> row = noise<std::uint16_t>(3 * 35);
    std::mt19937 random(1);
    const std::uint16_t edges[] = {0, 1, 2, 21845, 32767, 32768, 65533, 65534, 65535};
    for (std::size_t count = 0; count <= 35; ++count) { // more than two vectors
        std::vector<std::uint16_t> scalar = row, simd = row;
        Kernels::Scalar::makeRowMonochrome(&scalar[count % 3], count - (count > 34));
        Kernels::makeRowMonochrome(&simd[count % 3], count - (count > 34));
        QVERIFY(sameBits(scalar, simd));
        for (std::uint16_t& value : row) // sums near each carry
            value = edges[random() % std::size(edges)];
    }
}

void KernelsTest::findsEverySingleDifference()
{
    for (const int channels : {2, 3, 4, 5}) {
        QVERIFY(findsEveryDifference<std::uint8_t>(channels));
        QVERIFY(findsEveryDifference<std::uint16_t>(channels));
        QVERIFY(findsEveryDifference<float>(channels));
    }
}

void KernelsTest::encodesAndDecodes()
{
    const std::vector<std::uint8_t> bytes = noise<std::uint8_t>(111);
    for (std::size_t count = 0; count <= 110; ++count) {
        std::string scalar(152, '.'), simd = scalar;
        const std::size_t length = Kernels::Scalar::encodeBase64(
            &bytes[1], count, Kernels::standardAlphabet.data(), scalar.data());
        QCOMPARE(
            Kernels::encodeBase64(&bytes[1], count, Kernels::standardAlphabet.data(), simd.data()),
            length);
        QCOMPARE(simd, scalar);
        std::vector<std::uint8_t> decoded((length + 3) / 4 * 3 + 1, 7);
        QCOMPARE(Kernels::decodeBase64(simd.data(), length, decoded.data()), count);
        QVERIFY(std::equal(&bytes[1], &bytes[1] + count, decoded.begin()) && decoded.back() == 7);
    }
    std::string text = QByteArray(96, 0x5B).toBase64().toStdString();
    for (std::size_t i = 0; i < text.size() * 256; ++i) { // every byte at every place
        const char before = std::exchange(text[i / 256], char(i % 256));
        std::vector<std::uint8_t> scalar(96), simd(96);
        const std::size_t count =
            Kernels::Scalar::decodeBase64(text.data(), text.size(), scalar.data());
        QCOMPARE(Kernels::decodeBase64(text.data(), text.size(), simd.data()), count);
        QVERIFY(std::equal(scalar.begin(), scalar.begin() + std::ptrdiff_t(count), simd.begin()));
        text[i / 256] = before;
    }
}

QTEST_APPLESS_MAIN(KernelsTest)
#include "tst_kernels.moc"
