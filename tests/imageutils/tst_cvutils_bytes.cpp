// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <QtTest/QTest>

#include <climits>
#include <random>

using namespace TestSupport;
using Bytes = std::vector<unsigned char>;

namespace {

Bytes bytesOf(const QByteArray& array) { return Bytes(array.begin(), array.end()); }

/// 32-bit integers, lowest byte first, and `zeros` bytes of data.
Bytes header(std::initializer_list<qint64> fields, std::size_t zeros = 0)
{
    Bytes bytes;
    for (const qint64 field : fields) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back((unsigned char)(field >> shift));
    }
    bytes.resize(bytes.size() + zeros);
    return bytes;
}

/// What `text` decodes to up to its first character outside base64, as Qt decodes it.
Bytes decodedByQt(const std::string& text)
{
    const auto end =
        text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
    return bytesOf(QByteArray::fromBase64(QByteArray::fromStdString(text.substr(0, end))));
}

} // namespace

/// The byte, text and list forms of matrices.
class CvUtilsBytesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void everyTypeComesBack();
    void bytesAreTheHeaderAndTheElements();
    void readerRefusesWhatItCannotBack();
    void textIsThatOfTheStandard();
    void anyOtherCharacterEndsTheDecoding();
    void listHoldsRowsOfFloats();
};

void CvUtilsBytesTest::everyTypeComesBack()
{
    for (int depth = CV_8U; depth <= CV_16F; ++depth) {
        for (int channels = 1; channels <= 5; ++channels) {
            const cv::Mat whole = noise(7, 6, CV_MAKETYPE(depth, channels));
            for (const cv::Mat& mat :
                 {whole, whole(cv::Rect(1, 2, 4, 3)), whole.col(2), whole.row(3)}) {
                Bytes bytes = CvUtils::serializeMat(mat);
                QCOMPARE(bytes.size(), 16 + mat.total() * mat.elemSize());
                bytes.resize(bytes.size() + 3, 99); // bytes after the data are ignored
                QVERIFY(sameBytes(CvUtils::deserializeMat(bytes), mat));
            }
        }
    }
    const cv::Mat large = noise(3100, 2800, CV_32FC1); // large enough to be prefaulted
    const std::string text = CvUtils::base64Encode(CvUtils::serializeMat(large));
    QVERIFY(sameBytes(CvUtils::deserializeMat(CvUtils::base64Decode(text)), large));
}

void CvUtilsBytesTest::bytesAreTheHeaderAndTheElements()
{
    QCOMPARE(CvUtils::serializeMat(cv::Mat()), header({0, 0, 0, 1}));
    QCOMPARE(CvUtils::serializeMat(cv::Mat(2, 3, CV_8UC3, cv::Scalar())),
             header({16, 2, 3, 3}, 18));
    const cv::Mat empty = CvUtils::deserializeMat(header({4094, 0, INT_MAX, 512}));
    QVERIFY(empty.type() == CV_64FC(512) && empty.size() == cv::Size(INT_MAX, 0));
    QCOMPARE(CvUtils::deserializeMat(header({0, 5, 0, 1})).rows, 5);
}

void CvUtilsBytesTest::readerRefusesWhatItCannotBack()
{
    // Too short, negative, types beyond their bits, 2^64 bytes.
    for (const Bytes& bytes :
         {Bytes(), header({0, 0, 0}, 3), header({16, 2, 3, 3}, 17), header({0, -1, 3, 1}, 64),
          header({0, -2, -3, 1}, 64), header({0x1000, 1, 1, 1}, 64), header({-1, 1, 1, 1}, 64),
          header({4094, 1 << 22, 1 << 30, 512}, 64)}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^deserializeMat: "));
        const cv::Mat mat = CvUtils::deserializeMat(bytes);
        QVERIFY(mat.empty() && mat.rows == 0 && mat.type() == 0);
    }
}

void CvUtilsBytesTest::textIsThatOfTheStandard()
{
    // RFC 4648, section 10.
    const std::string texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
    for (int length = 0; length < 7; ++length)
        QCOMPARE(CvUtils::base64Encode(bytesOf(QByteArray("foobar").left(length))), texts[length]);
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 9300; length += length < 100 ? 1 : 97) {
        QByteArray bytes(qsizetype(length), '\0');
        std::generate(bytes.begin(), bytes.end(), [&random] { return char(random()); });
        const std::string text = CvUtils::base64Encode(bytesOf(bytes));
        QCOMPARE(text, bytes.toBase64().toStdString());
        QCOMPARE(CvUtils::base64Decode(text), bytesOf(bytes));
        QCOMPARE(CvUtils::base64Decode(text.substr(0, text.find('='))), bytesOf(bytes));
    }
}

void CvUtilsBytesTest::anyOtherCharacterEndsTheDecoding()
{
    const std::string text = QByteArray(3200, 0x5B).toBase64().toStdString();
    // Near the beginning, and around the place where a block of the decoder ends.
    for (const std::size_t from : {0u, 4090u}) {
        for (int i = 0; i < 10 * 256; ++i) {
            std::string changed = text;
            changed[from + std::size_t(i / 256)] = char(i % 256);
            QCOMPARE(CvUtils::base64Decode(changed), decodedByQt(changed));
        }
    }
}

void CvUtilsBytesTest::listHoldsRowsOfFloats()
{
    const auto row = [](float a, float b) { return QVariant(QVariantList{a, b}); };
    QCOMPARE(CvUtils::matToList(asView(numbered(2, 2, CV_32FC1))),
             QVariantList({row(0, 1), row(10, 11)}));
    const int cube[] = {2, 2, 2};
    QCOMPARE(CvUtils::matToList(cv::Mat(3, cube, CV_32FC1)), QVariantList());
    for (const int type : {CV_32FC3, CV_8UC1}) {
        QTest::ignoreMessage(
            QtWarningMsg, "[CVUtils] Attempted mat conversion to QVariantList on non-vector Mat");
        QCOMPARE(CvUtils::matToList(numbered(2, 2, type)), QVariantList());
    }
    QTest::ignoreMessage(QtWarningMsg, "serializeMat: matrix must have two dimensions, got: 3");
    QCOMPARE(CvUtils::serializeMat(cv::Mat(3, cube, CV_8UC1)), Bytes());
}

QTEST_GUILESS_MAIN(CvUtilsBytesTest)
#include "tst_cvutils_bytes.moc"
