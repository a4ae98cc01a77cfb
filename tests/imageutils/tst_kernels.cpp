// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/vectors.h>

#include <QtTest/QTest>

#include <cmath>
#include <cstring>
#include <random>

namespace {

template<typename T>
std::vector<T> noise(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<T> values(count);
    for (T& value : values)
        value = std::is_floating_point_v<T> ? T(random() / 4e9) : T(random());
    return values;
}

template<typename T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b)
{
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

} // namespace

/// The loops in vectors, of every instruction set that this processor has, against the plain ones.
/// What lies around the output is compared too.
class KernelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void resamplesRows();
    void resamplesColumns();
};

void KernelsTest::initTestCase_data()
{
    QTest::addColumn<QByteArray>("set");
    for (const char* const set : Kernels::vectorInstructionSets())
        QTest::newRow(set) << QByteArray(set);
}

void KernelsTest::init()
{
    QFETCH_GLOBAL(QByteArray, set);
    Kernels::useVectorInstructionSet(set);
    QCOMPARE(QByteArray(Kernels::vectorInstructionSet()), set); // asked of code made of that set
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
                std::vector<float> plain(19 * 3 * 133, -7), vectors = plain;
                std::vector<float> buffer(Kernels::rowBufferFloats(samples, filter));
                std::vector<const float*> from;
                std::vector<float*> toPlain, toVectors;
                for (std::size_t row = 0; row < std::size_t(rows); ++row) {
                    from.push_back(&pixels[1 + row * std::size_t(samples) * 3]);
                    toPlain.push_back(&plain[3 + row * std::size_t(length + 1) * 3]);
                    toVectors.push_back(&vectors[3 + row * std::size_t(length + 1) * 3]);
                }
                Kernels::interpolateRows(from.data(), rows, samples, filter, toPlain.data(),
                                         buffer.data());
                Kernels::interpolateRowsInVectors(from.data(), rows, samples, filter,
                                                  toVectors.data(), buffer.data());
                QVERIFY(sameBits(plain, vectors));
            }
        }
    }
}

void KernelsTest::resamplesColumns()
{
    std::vector<float> line = noise<float>(60 * 210 + 1);
    line[4000] = INFINITY;
    int radius = 0;
    const auto weights = Kernels::computeWeights(11, 0, 0.5f, 0.3f, radius);
    const auto centres = Kernels::centreSamples(0, 11, 0.3f, 60 - 2 * radius);
    const Kernels::Filter filter = {centres.data(), weights.data(), 2 * radius + 1, 11};
    for (std::size_t width = 1; width <= 205; ++width) {
        std::vector<float> plain(12 * 207, -7), vectors = plain;
        Kernels::interpolateLine(&line[1], width, filter, &plain[1], width + 2);
        Kernels::interpolateLineInVectors(&line[1], width, filter, &vectors[1], width + 2);
        QVERIFY(sameBits(plain, vectors));
    }
}

QTEST_APPLESS_MAIN(KernelsTest)
#include "tst_kernels.moc"
