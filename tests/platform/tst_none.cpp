// SPDX-License-Identifier: Apache-2.0
//
// What the library does on a system about which `platform/` knows nothing.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>
#include <support/log.h>

#include <QtGui/QClipboard>
#include <QtTest/QtTest>

class NoneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sameBitmapIsPastedTwice()
    {
        TestSupport::LogCapture log;
        QImage picture(3, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QGuiApplication::clipboard()->setImage(picture);
        OSUtils utils;
        const QStringList paths = utils.clipboard();
        QCOMPARE(QImage(paths.value(0)).size(), picture.size());
        QCOMPARE(utils.clipboard(), paths);
    }

    void operationsGiveTheirNeutralResults()
    {
        TestSupport::LogCapture log;
        OSUtils utils;
        QSignalSpy errors(&utils, &OSUtils::showFileError);
        utils.showFileInGraphicalShell("/");
        QCOMPARE(errors.value(0),
                 QVariantList{QDir::toNativeSeparators("/")}); // before the call returns
        log.take();
        QCOMPARE(OSUtils::getMonitorColorSpace(), QColorSpace(QColorSpace::SRgb));
        QCOMPARE(log.takeTexts().value(0),
                 "warning: Active Window does not contain a device context");
        // No plug-in can be opened, and only Qt tells the kind of a file.
        const QString here = QCoreApplication::applicationFilePath();
        QCOMPARE(NImageUtils::imageSize(here), QSize());
        QCOMPARE(NImageUtils::imageSize("/"), QSize());
        CvUtils::imwrite(here + ".bmp", cv::Mat(2, 2, CV_8UC3), 0, 1, 0, 1);
        QCOMPARE(log.takeTexts(),
                 QStringList({"warning: Could not get image size: imageutils-header-openimageio: "
                              "plug-ins cannot be opened on this system",
                              "warning: Could not get image size: not a regular file",
                              "critical: imwrite: OpenCV's codecs cannot be loaded: "
                              "imageutils-writer-imgcodecs: plug-ins cannot be opened on this "
                              "system"}));
    }
};

QTEST_MAIN(NoneTest)
#include "tst_none.moc"
