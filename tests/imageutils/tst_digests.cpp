// SPDX-License-Identifier: Apache-2.0
//
// What is stored or compared between machines has the same bits on every system: digests.txt holds
// the digests, and the test of each system compares with them. After a change that is made on
// purpose, the failing rows say the new ones.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtTest/QtTest>

#include <functional>

namespace {

/// Values that are the same on every system, made of whole numbers: all of `uchar`, or 0 to 1.
cv::Mat values(int rows, int cols, int type)
{
    cv::Mat numbers(rows, cols * CV_MAT_CN(type), CV_32S);
    unsigned int state = 1;
    for (int& number : cv::Mat_<int>(numbers))
        number = int((state = state * 1664525U + 1013904223U) >> 24);
    cv::Mat result;
    numbers.convertTo(result, CV_MAT_DEPTH(type), CV_MAT_DEPTH(type) >= CV_32F ? 1.0 / 256 : 1);
    return result.reshape(CV_MAT_CN(type));
}

QByteArray bytesOf(const cv::Mat& mat)
{
    const cv::Mat whole = mat.clone();
    return QByteArray(reinterpret_cast<const char*>(whole.data),
                      qsizetype(whole.total() * whole.elemSize()));
}

QByteArray resampled()
{
    QByteArray bytes;
    const int type = CV_32FC3;
    const double filters[][2] = {{0.0, 0.5}, {1.0 / 3, 1.0 / 3}, {1.0, 0.0}};
    for (const auto& [b, c] : filters)
        for (const double scale : {0.37, 0.9, 1.7})
            bytes += bytesOf(CvUtils::resize(values(61, 83, type), scale, scale, 1000, 1000,
                                             float(b), float(c)));
    return bytes + bytesOf(CvUtils::upsample(values(31, 23, type), 2.6F, 1000, 1000, 1.5F));
}

QByteArray converted()
{
    QByteArray bytes;
    for (const int depth : {CV_8U, CV_16U, CV_32F}) {
        bytes += bytesOf(CvUtils::convert(values(9, 33, CV_8UC4), depth));
        bytes += bytesOf(CvUtils::convert(values(9, 33, CV_32FC3), depth));
    }
    cv::Mat grey = values(9, 33, CV_32FC3);
    CvUtils::toMonochrome(grey);
    return bytes + bytesOf(grey);
}

QByteArray encoded()
{
    std::string text;
    for (int length = 0; length < 300; ++length)
        text += CvUtils::base64Encode(CvUtils::serializeMat(values(1, length + 1, CV_8U)));
    return QByteArray::fromStdString(text);
}

QByteArray serialised()
{
    QByteArray bytes;
    for (const int type : {CV_8UC1, CV_16UC3, CV_32SC2, CV_32FC4, CV_64FC1})
        for (const unsigned char byte : CvUtils::serializeMat(values(5, 7, type)))
            bytes.append(char(byte));
    return bytes;
}

QByteArray keys()
{
    const QVariantList list{1,
                            -1LL,
                            2.5,
                            1.5F,
                            true,
                            QStringLiteral("ä€😀"),
                            QByteArray("\0\xff", 2),
                            QSize(3, 4),
                            QRectF(0.5, 1, 2, 3),
                            QVariant()};
    QVariantMap params{{QStringLiteral("list"), list}};
    QByteArray bytes;
    for (const QVariant& value : list) {
        params.insert(QString::number(params.size()), value);
        bytes += QByteArray::number(NImageUtils::hash(7, params)) + ' ';
    }
    return bytes;
}

} // namespace

class DigestsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalThoseOfOtherSystems_data();
    void equalThoseOfOtherSystems();
};

void DigestsTest::equalThoseOfOtherSystems_data()
{
    QTest::addColumn<std::function<QByteArray()>>("make");
    QTest::newRow("resampled") << std::function(&resampled);
    QTest::newRow("converted") << std::function(&converted);
    QTest::newRow("base64") << std::function(&encoded);
    QTest::newRow("matrices") << std::function(&serialised);
    QTest::newRow("keys") << std::function(&keys);
}

void DigestsTest::equalThoseOfOtherSystems()
{
    QFETCH(const std::function<QByteArray()>, make);
    QFile file(QStringLiteral(":/digests.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray line = QByteArray(QTest::currentDataTag()) + ' ' +
                            QCryptographicHash::hash(make(), QCryptographicHash::Sha256).toHex();
    QVERIFY2(file.readAll().split('\n').contains(line), line.constData());
}

QTEST_APPLESS_MAIN(DigestsTest)
#include "tst_digests.moc"
