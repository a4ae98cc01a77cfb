// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>

#include <support/matrices.h>

#include <QtTest/QTest>

#include <functional>
#include <mutex>
#include <set>
#include <string>

namespace {

std::mutex s_mutex;
std::set<std::string> s_called;

void note(const char* function)
{
    const std::lock_guard lock(s_mutex);
    s_called.insert(function);
}

} // namespace

// These functions replace those that choose the best SIMD implementation for the CPU.
#define NOTED(Result, function, parameters, arguments)                                             \
    Result Kernels::function parameters                                                            \
    {                                                                                              \
        note(#function);                                                                           \
        return Scalar::function arguments;                                                         \
    }

NOTED(void, interpolateColumns,
      (const float* const* rows, std::size_t width, const Filter& filter, float* out,
       std::size_t stride),
      (rows, width, filter, out, stride))
NOTED(void, interpolateRows,
      (const float* const* rows, int count, int samples, const Filter& filter, float* const* out,
       float* buffer),
      (rows, count, samples, filter, out, buffer))
NOTED(void, splitRow, (const float* pixels, std::size_t count, float* chroma, float* alpha),
      (pixels, count, chroma, alpha))
NOTED(void, mergeRow, (const float* chroma, const float* alpha, std::size_t count, float* pixels),
      (chroma, alpha, count, pixels))
NOTED(bool, isRowMonochrome, (const std::uint8_t* row, std::size_t count, int channels),
      (row, count, channels))
NOTED(bool, isRowMonochrome, (const std::uint16_t* row, std::size_t count, int channels),
      (row, count, channels))
NOTED(bool, isRowMonochrome, (const float* row, std::size_t count, int channels),
      (row, count, channels))
NOTED(void, makeRowMonochrome, (std::uint16_t * row, std::size_t count), (row, count))
NOTED(std::size_t, encodeBase64,
      (const std::uint8_t* bytes, std::size_t count, const char* alphabet, char* text),
      (bytes, count, alphabet, text))
NOTED(std::size_t, decodeBase64, (const char* text, std::size_t count, std::uint8_t* bytes),
      (text, count, bytes))

using Operation = std::function<void()>;
using Functions = std::set<std::string>;
Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(Functions)

/// The operations run the loops that choose an instruction set. The scalar loops give the same
/// bits, so that no other test would notice their use.
class CvUtilsDispatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usesTheBestInstructionSet_data();
    void usesTheBestInstructionSet();
};

void CvUtilsDispatchTest::usesTheBestInstructionSet_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<Functions>("functions");
    const auto add = [](const char* name, const Operation& operation, const Functions& functions) {
        QTest::newRow(name) << operation << functions;
    };
    const cv::Mat colours = TestSupport::noise(9, 8, CV_32FC3);
    const cv::Mat pixels = TestSupport::noise(9, 8, CV_32FC4);
    add("resize", [=] { CvUtils::resize(colours, 0.5, 0, 0, 0, 0, 0.5F); },
        {"interpolateRows", "interpolateColumns"});
    add("planes",
        [=] {
            cv::Mat chroma, alpha;
            CvUtils::splitChromaAlpha(pixels, chroma, alpha);
            CvUtils::mergeChromaAlpha(chroma, alpha);
        },
        {"splitRow", "mergeRow"});
    for (const int type : {CV_8UC3, CV_16UC3, CV_32FC3})
        add(qPrintable(QString("isMonochrome of type %1").arg(type)),
            [=] { CvUtils::isMonochrome(TestSupport::noise(4, 4, type)); }, {"isRowMonochrome"});
    add("toMonochrome",
        [] {
            cv::Mat mat = TestSupport::noise(4, 4, CV_16UC3);
            CvUtils::toMonochrome(mat);
        },
        {"makeRowMonochrome"});
    add("base64",
        [] {
            CvUtils::base64Decode(CvUtils::base64Encode({1, 2, 3}));
        },
        {"encodeBase64", "decodeBase64"});
}

void CvUtilsDispatchTest::usesTheBestInstructionSet()
{
    QFETCH(const Operation, operation);
    QFETCH(const Functions, functions);
    s_called.clear();
    operation();
    QVERIFY(s_called == functions);
}

QTEST_GUILESS_MAIN(CvUtilsDispatchTest)
#include "tst_cvutils_dispatch.moc"
