// SPDX-License-Identifier: Apache-2.0
//
// What is left where the operating system has no answers.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>
#include <support/log.h>

#include <QtTest/QtTest>

class NoneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheNeutralRoad()
    {
        TestSupport::LogCapture log;
        OSUtils utils;
        QSignalSpy errors(&utils, &OSUtils::showFileError);
        utils.showFileInGraphicalShell("/");
        QCOMPARE(errors.value(0), QVariantList{"/"}); // at once: nobody was asked
        log.take();
        QCOMPARE(OSUtils::getMonitorColorSpace(), QColorSpace(QColorSpace::SRgb));
        QCOMPARE(log.takeTexts().value(0),
                 "warning: Active Window does not contain a device context");
        // No part can be opened, and nothing but Qt tells what a file is.
        const QString here = QCoreApplication::applicationFilePath();
        QCOMPARE(NImageUtils::imageSize(here), QSize());
        QCOMPARE(NImageUtils::imageSize("/"), QSize());
        CvUtils::imwrite(here + ".bmp", cv::Mat(2, 2, CV_8UC3), 0, 1, 0, 1);
        QCOMPARE(log.takeTexts(),
                 QStringList({"warning: Could not get image size: imageutils-header-openimageio: "
                              "parts cannot be opened on this system",
                              "warning: Could not get image size: not a regular file",
                              "critical: imwrite: OpenCV's codecs cannot be loaded: "
                              "imageutils-writer-imgcodecs: parts cannot be opened on this "
                              "system"}));
    }
};

QTEST_MAIN(NoneTest)
#include "tst_none.moc"
