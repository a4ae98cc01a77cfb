// SPDX-License-Identifier: Apache-2.0
#include <aiengine/deviceselector.h>
#include <aiengine/machine_unix.h>
#include <aiengine/systeminfo.h>

#include <QtTest/QtTest>

class AiEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsNothingBeforeItIsCreated();
    void knowsOtherProcessors();
};

void AiEngineTest::knowsNothingBeforeItIsCreated()
{
    auto& system = aiutils::SystemInfo::GetInstance(false);
    QCOMPARE(system.cpuName(), "");
    QCOMPARE(system.cpuMemory(true).first, 0.0);
    QCOMPARE(aiengine::DeviceSelector::GetInstance(false).deviceMemory(0), -1.0);
    QCOMPARE(&aiutils::SystemInfo::GetInstance(true), &system);
    const auto [total, available] = system.cpuMemory(true);
    QVERIFY(!system.cpuName().empty() && available > 0 && available < total);
    const std::vector<char> used(64 << 20,
                                 'x'); // what is available changes, and the answer does not
    QCOMPARE(system.cpuMemory(false).second, available);
}

void AiEngineTest::knowsOtherProcessors()
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

QTEST_APPLESS_MAIN(AiEngineTest)
#include "tst_aiengine.moc"
