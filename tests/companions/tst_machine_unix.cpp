// SPDX-License-Identifier: Apache-2.0
#include <aiengine/machine_unix.h>

#include <QtTest/QtTest>

class MachineUnixTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsOtherProcessors();
};

void MachineUnixTest::knowsOtherProcessors()
{
    const QTemporaryDir folder;
    const auto write = [&](const char* name, const QByteArray& bytes) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) ? file.fileName().toUtf8() : "";
    };
    const QByteArray intel = write("1", "vendor_id\t: A\nmodel\t: 8\nmodel name\t:  I   i: 7 \n");
    const QByteArray arm = write("2", "processor\t: 0\nCPU implementer\t: 0x61\n");
    const aiengine::Processor processor = aiengine::processorIn(intel);
    QCOMPARE(processor.name + '|' + processor.maker, "I i: 7|A");
    QCOMPARE(aiengine::processorIn(arm).name, "");
    QVERIFY(aiengine::isAppleIn(arm, "/none") && !aiengine::isAppleIn(intel, "/none"));
    QVERIFY(aiengine::isAppleIn(intel, write("3", "Apple Inc.\n")));
}

QTEST_APPLESS_MAIN(MachineUnixTest)
#include "tst_machine_unix.moc"
