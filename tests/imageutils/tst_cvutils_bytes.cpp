// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <QtTest/QTest>

#include <climits>
#include <random>

using namespace TestSupport;
using Bytes = std::vector<unsigned char>;
Q_DECLARE_METATYPE(cv::Mat)

namespace {

Bytes bytesOf(const QByteArray& array) { return Bytes(array.begin(), array.end()); }

QByteArray arrayOf(const Bytes& bytes)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
}

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
QByteArray decodedByQt(const QByteArray& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
               c == '+' || c == '/';
    });
    return QByteArray::fromBase64(text.left(end - text.begin()));
}

} // namespace

/// The byte, text and list forms of matrices.
class CvUtilsBytesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void everyTypeComesBack();
    void bytesAreTheHeaderAndTheElements_data();
    void bytesAreTheHeaderAndTheElements();
    void readerRefusesWhatItCannotBack_data();
    void readerRefusesWhatItCannotBack();
    void textIsThatOfTheStandard_data();
    void textIsThatOfTheStandard();
    void randomBytesAgreeWithQt();
    void anyOtherCharacterEndsTheDecoding();
    void listHoldsRowsOfFloats();
};

void CvUtilsBytesTest::everyTypeComesBack()
{
    for (int depth = CV_8U; depth <= CV_16F; ++depth) {
        for (int channels = 1; channels <= 5; ++channels) {
            const int type = CV_MAKETYPE(depth, channels);
            const cv::Mat random = noise(7, 6 * CV_ELEM_SIZE(type), CV_8UC1);
            const cv::Mat whole(7, 6, type, random.data);
            for (const cv::Mat& mat :
                 {whole, whole(cv::Rect(1, 2, 4, 3)), whole.col(2), whole.row(3)}) {
                const Bytes bytes = CvUtils::serializeMat(mat);
                QCOMPARE(bytes.size(), 16 + mat.total() * mat.elemSize());
                const cv::Mat copy =
                    CvUtils::deserializeMat(CvUtils::base64Decode(CvUtils::base64Encode(bytes)));
                QVERIFY(sameBytes(copy, mat));
            }
        }
    }
}

void CvUtilsBytesTest::bytesAreTheHeaderAndTheElements_data()
{
    QTest::addColumn<cv::Mat>("mat");
    QTest::addColumn<Bytes>("bytes");
    QTest::newRow("empty") << cv::Mat() << header({0, 0, 0, 1});
    QTest::newRow("2 x 3, three bytes")
        << cv::Mat(2, 3, CV_8UC3, cv::Scalar()).clone() << header({16, 2, 3, 3}, 18);
    QTest::newRow("no columns") << cv::Mat(5, 0, CV_32FC3) << header({21, 5, 0, 3});
    QTest::newRow("no rows") << cv::Mat(0, INT_MAX, CV_64FC(512))
                             << header({4094, 0, INT_MAX, 512});
}

void CvUtilsBytesTest::bytesAreTheHeaderAndTheElements()
{
    QFETCH(cv::Mat, mat);
    QFETCH(Bytes, bytes);
    QCOMPARE(CvUtils::serializeMat(mat), bytes);
    bytes.resize(bytes.size() + 3, 99); // what follows is ignored
    const cv::Mat copy = CvUtils::deserializeMat(bytes);
    QCOMPARE(copy.type(), mat.type());
    QCOMPARE(copy.rows, mat.rows);
    QCOMPARE(copy.cols, mat.cols);
}

void CvUtilsBytesTest::readerRefusesWhatItCannotBack_data()
{
    QTest::addColumn<Bytes>("bytes");
    QTest::newRow("nothing") << Bytes();
    QTest::newRow("15 bytes") << header({0, 0, 0}, 3);
    QTest::newRow("one byte missing") << header({16, 2, 3, 3}, 17);
    QTest::newRow("negative rows") << header({0, -1, 3, 1}, 64);
    QTest::newRow("both negative") << header({0, -2, -3, 1}, 64);
    QTest::newRow("type beyond its bits") << header({0x1000, 1, 1, 1}, 64);
    QTest::newRow("negative type") << header({-1, 1, 1, 1}, 64);
    QTest::newRow("wraps to no bytes") << header({4094, 1 << 22, 1 << 30, 512}, 64);
    QTest::newRow("largest") << header({4094, INT_MAX, INT_MAX, 512}, 64);
}

void CvUtilsBytesTest::readerRefusesWhatItCannotBack()
{
    QFETCH(Bytes, bytes);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^deserializeMat: "));
    const cv::Mat mat = CvUtils::deserializeMat(bytes);
    QVERIFY(mat.empty() && mat.rows == 0 && mat.type() == 0);
}

void CvUtilsBytesTest::textIsThatOfTheStandard_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("text");
    // RFC 4648, section 10.
    const char* const texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
    for (int length = 0; length < 7; ++length)
        QTest::addRow("foobar to %d", length)
            << QByteArray("foobar").left(length) << QByteArray(texts[length]);
    QTest::newRow("a header") << arrayOf(header({16, 2, 3, 3}))
                              << QByteArray("EAAAAAIAAAADAAAAAwAAAA==");
}

void CvUtilsBytesTest::textIsThatOfTheStandard()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, text);
    QCOMPARE(CvUtils::base64Encode(bytesOf(bytes)), text.toStdString());
    QCOMPARE(CvUtils::base64Decode(text.toStdString()), bytesOf(bytes));
    text.replace('=', "");
    QCOMPARE(CvUtils::base64Decode(text.toStdString()), bytesOf(bytes));
}

void CvUtilsBytesTest::randomBytesAgreeWithQt()
{
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 9300; length += length < 100 ? 1 : 97) {
        Bytes bytes(length);
        std::generate(bytes.begin(), bytes.end(), [&random] { return (unsigned char)(random()); });
        const std::string text = CvUtils::base64Encode(bytes);
        QCOMPARE(text, arrayOf(bytes).toBase64().toStdString());
        QCOMPARE(CvUtils::base64Decode(text), bytes);
    }
}

void CvUtilsBytesTest::anyOtherCharacterEndsTheDecoding()
{
    const QByteArray text = arrayOf(Bytes(3200, 0x5B)).toBase64();
    // Near the beginning, and around the place where a block of the decoder ends.
    for (const int from : {0, 4090}) {
        for (int place = from; place < from + 10; ++place) {
            for (int character = 0; character < 256; ++character) {
                QByteArray changed = text;
                changed[place] = char(character);
                QCOMPARE(arrayOf(CvUtils::base64Decode(changed.toStdString())),
                         decodedByQt(changed));
            }
        }
    }
}

void CvUtilsBytesTest::listHoldsRowsOfFloats()
{
    const auto row = [](float a, float b) { return QVariant(QVariantList{a, b}); };
    QCOMPARE(CvUtils::matToList(asView(numbered(2, 2, CV_32FC1))),
             QVariantList({row(0, 1), row(10, 11)}));
    QCOMPARE(CvUtils::matToList(cv::Mat(2, 0, CV_32FC1)),
             QVariantList(2, QVariant(QVariantList())));
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
