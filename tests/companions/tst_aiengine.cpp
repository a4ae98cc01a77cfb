// SPDX-License-Identifier: Apache-2.0
#include <aiengine/deviceselector.h>
#include <aiengine/systeminfo.h>

#include <support/log.h>

#include <QtTest/QtTest>

class AiEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsNothingBeforeItIsCreated();
    void summarisesTheMachine();
    void survivesItsDrivers();
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

void AiEngineTest::summarisesTheMachine()
{
    for (const char* const name : {"VK_DRIVER_FILES", "VK_ICD_FILENAMES"})
        qputenv(name, "/none/such.json");
    auto& system = aiutils::SystemInfo::GetInstance(true);
    TestSupport::LogCapture log;
    system.logSystemInfo();
    QStringList lines = log.takeTexts();
    QVERIFY(lines.value(0).startsWith("info: System: ") &&
            lines[0].endsWith(QSysInfo::kernelVersion()));
    QString memory;
    QDebug(&memory) << system.cpuMemory(false).first << system.cpuMemory(false).second;
    QCOMPARE(lines.mid(1),
             QStringList({"info: Processor: " + QString::fromStdString(system.cpuName()),
                          "info: Memory in GiB, all and available: " + memory.trimmed(),
                          "info: Graphics devices: none"}));
}

// A driver that answers, one that crashes and one that hangs.
void AiEngineTest::survivesItsDrivers()
{
    if (!*FAKE_DRIVER)
        QSKIP("no driver can be put before Vulkan's loader");
    const QTemporaryDir folder;
    QFile file(folder.filePath("driver.json"));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(R"({"file_format_version": "1.0.0", "ICD": {"library_path": ")" FAKE_DRIVER
               R"(", "api_version": "1.0.0"}})");
    file.close();
    for (const char* const name : {"VK_DRIVER_FILES", "VK_ICD_FILENAMES"})
        qputenv(name, file.fileName().toUtf8());
    auto& system = aiutils::SystemInfo::GetInstance(true);
    for (const QByteArray mode : {"answers", "crashes", "hangs"}) {
        qputenv("FAKEVULKAN", mode);
        TestSupport::LogCapture log;
        QElapsedTimer timer;
        timer.start();
        const auto devices = system.getGPUList(true);
        QVERIFY(timer.elapsed() < 15000); // the limit is 5 s
        const QStringList lines = log.takeTexts();
        QCOMPARE(devices.size(), mode == "answers" ? 2U : 0U);
        QCOMPARE(lines.size(), mode == "answers" ? 0 : 1);
        QVERIFY(lines.isEmpty() || lines[0].startsWith("warning: getGPUList: no answer from"));
        if (mode != "answers")
            continue;
        QVERIFY(devices[0].kind == "discrete" && devices[0].vendorId == 4711 &&
                devices[1].deviceId == 2 && devices[1].vram == 1.5F);
        qputenv("FAKEVULKAN", "crashes"); // the drivers are not asked again
        QCOMPARE(system.getGPUList(false).size(), 2U);
    }
}

QTEST_APPLESS_MAIN(AiEngineTest)
#include "tst_aiengine.moc"
