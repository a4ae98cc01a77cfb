// SPDX-License-Identifier: Apache-2.0
//
// What is left where the operating system has no answers.
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
    }
};

QTEST_MAIN(NoneTest)
#include "tst_none.moc"
