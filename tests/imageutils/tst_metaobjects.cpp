// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>
#include <imageutils/mathutils.h>
#include <imageutils/osutils.h>
#include <imageutils/winutils.h>

#include <support/log.h>

#include <QtTest/QTest>

#include <type_traits>

namespace {

/// One line for each member of a class's own, in order: kind, result, name, types and names of the
/// arguments; "+" for a form made from default arguments. Then its properties and its class
/// information.
QStringList describe(const QMetaObject& meta)
{
    QStringList lines;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QStringList arguments;
        for (int k = 0; k < method.parameterCount(); ++k)
            arguments += QString::fromLatin1(method.parameterMetaType(k).name()) + ' ' +
                         method.parameterNames()[k];
        const char* const kinds[] = {"", "signal ", "slot ", "constructor "};
        lines +=
            QString("%1%2%3 %4(%5)%6")
                .arg(QLatin1String(method.attributes() & QMetaMethod::Cloned ? "+" : ""),
                     QLatin1String(kinds[method.methodType()]),
                     QLatin1String(method.returnMetaType().name()),
                     QString::fromLatin1(method.name()), arguments.join(", "),
                     QLatin1String(method.access() == QMetaMethod::Public ? "" : " not public"));
    }
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty p = meta.property(i);
        const bool plain = p.isReadable() && p.isDesignable() && p.isScriptable() && p.isStored() &&
                           !p.isWritable() && !p.isResettable() && !p.isBindable();
        lines += QString("property %1 %2%3 %4")
                     .arg(QLatin1String(p.metaType().name()), QLatin1String(p.name()),
                          QLatin1String(p.isConstant() ? " constant" : ""),
                          QString::fromLatin1(p.notifySignal().name()))
                     .trimmed() +
                 (plain ? "" : " not plain");
    }
    for (int i = meta.classInfoOffset(); i < meta.classInfoCount(); ++i)
        lines += QString("%1=%2").arg(QLatin1String(meta.classInfo(i).name()),
                                      QLatin1String(meta.classInfo(i).value()));
    return lines;
}

// clang-format off
const char* const imageMembers[] = {
    "QString urlToString(QUrl url)", "QUrl stringToUrl(QString string)",
    "QString getFilename(QString filePath)", "QString getBaseName(QString filePath)",
    "QString getPath(QString filePath)", "QString getExtension(QString filePath)",
    "bool isSupportedFile(QString filePath)", "bool isRawFile(QString filePath)", "bool isRawExt(QString extension)",
    "bool arePathsEqual(QString filePath, QString otherFilePath)",
    "QString adjustPathWhenOverwriting(QString outputPath)",
    "QStringList supportedFileFormats()", "QStringList nonRawFileFormats()", "QStringList rawFileFormats()",
    "QString getExportExtension(QString originalExtension, QString outputExtension, bool rawExposureOrColorUsed)",
    "+QString getExportExtension(QString originalExtension, QString outputExtension)",
    "+QString getExportExtension(QString originalExtension)",
    "QSize imageSize(QString path)", "bool isValidVariant(QVariant variant)", "bool isEmpty(QRectF rect)",
    "bool shouldGenerateThumbnail(QString filepath, QString thumbnailPath, NExifToolMetadata imageData)",
    "bool doesRectCoverRect(QRect rect, QRect otherRect)", "QRect getBoundingRect(QRect rect, double rotation)",
    "property float highConfidenceThreshold constant", "property float lowConfidenceThreshold constant",
    "QML.Element=auto",
};
const char* const osMembers[] = {
    "signal void devicePixelRatioChanged()", "signal void maxWidthChanged()", "signal void maxHeightChanged()",
    "signal void fileMissing(QString path)", "signal void showFileError(QString path)",
    "slot void screenChanged(QScreen* screen)",
    "QString operatingSystemVersion()", "QColorSpace getMonitorColorSpace()",
    "bool fileExists(QUrl path)", "bool fileExists(QString path)",
    "void showFileInGraphicalShell(QUrl path)", "void showFileInGraphicalShell(QString path)",
    "void openFolder(QUrl path)", "QStringList getAIProcessors()", "QString generateUuid()", "QString getTempDir()",
    "QRect geometry()", "void setGeometry(QRect geometry)", "QString machineId()", "QStringList gpuList()",
    "QString cpuName()", "qulonglong freeSpace(QString path)", "QString storageName(QString path)",
    "void logSystemInfo()", "float maxGpuVram()", "void clearTempFiles()", "void clearClipboardTempFiles()",
    "void clearThumbnailTempFiles()", "QStringList clipboard()", "bool isAppleProcessor()",
    "QFlags<Qt::KeyboardModifier> keyboardModifiers()", "void setCursor(QString resourceUrl)",
    "void changeCursor(QString resourceUrl)", "void clearCursor()", "QPoint mousePosition()", "void alert()",
    "bool darkMode()", "double getCpuMemory()", "int estimateRescueETASeconds(QSize inputSize, int deviceId)",
    "void writeTextToFile(QString fileName, QString text)",
    "property QString machineId constant", "property QString username constant",
    "property double devicePixelRatio devicePixelRatioChanged", "property int maxWidth maxWidthChanged",
    "property int maxHeight maxHeightChanged", "QML.Element=auto",
};
const char* const mathMembers[] = {"int mapBrushSize(float brushSize, QSize imageSize)"};
const char* const winMembers[] = {"slot QColorSpace getMonitorColorSpace()"};

template<auto... functions>
constexpr bool areStatic = (!std::is_member_function_pointer_v<decltype(functions)> && ...);
using I = NImageUtils;
using O = OSUtils;
static_assert(areStatic<
    &I::urlToString, &I::stringToUrl, &I::getFilename, &I::getBaseName, &I::getPath, &I::getExtension,
    &I::isSupportedFile, &I::isRawFile, &I::isRawExt, &I::arePathsEqual, &I::adjustPathWhenOverwriting,
    &I::supportedFileFormats, &I::nonRawFileFormats, &I::rawFileFormats, &I::getExportExtension, &I::imageSize,
    &I::isValidVariant, &I::isEmpty, &I::shouldGenerateThumbnail, &I::doesRectCoverRect, &I::getBoundingRect,
    &O::getMonitorColorSpace, &O::generateUuid, &O::getTempDir, &O::freeSpace, &O::storageName, &O::clearTempFiles,
    &O::clearClipboardTempFiles, &O::clearThumbnailTempFiles, &NMathUtils::mapBrushSize,
    &WinUtils::getMonitorColorSpace>);
static_assert(!areStatic<&O::geometry> && !areStatic<&O::darkMode> && !areStatic<&O::cpuName>);
// clang-format on

} // namespace

Q_DECLARE_METATYPE(const QMetaObject*)

/// What QML and dynamic calls see of the four classes: callers keep the indices, so they never
/// move.
class MetaObjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersKeepTheirPlaces_data();
    void membersKeepTheirPlaces();
    void dispatchReachesAndPassesOn();
};

void MetaObjectsTest::membersKeepTheirPlaces_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<QStringList>("members");
    const auto row = [](const QMetaObject& meta, const auto& members) {
        QTest::newRow(meta.className())
            << &meta << QStringList(std::begin(members), std::end(members));
    };
    row(NImageUtils::staticMetaObject, imageMembers);
    row(OSUtils::staticMetaObject, osMembers);
    row(NMathUtils::staticMetaObject, mathMembers);
    row(WinUtils::staticMetaObject, winMembers);
}

void MetaObjectsTest::membersKeepTheirPlaces()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(QStringList, members);
    QCOMPARE(meta->className(), QTest::currentDataTag());
    QCOMPARE(meta->superClass(), &QObject::staticMetaObject);
    QVERIFY(meta->enumeratorCount() == QObject::staticMetaObject.enumeratorCount() &&
            meta->constructorCount() == 0);
    QCOMPARE(describe(*meta), members);
}

void MetaObjectsTest::dispatchReachesAndPassesOn()
{
    NImageUtils images;
    const int offset = NImageUtils::staticMetaObject.methodOffset();
    QString result;
    const QString extension = "dng", output = "png";
    void* arguments[] = {&result, const_cast<QString*>(&extension), const_cast<QString*>(&output)};
    QVERIFY(images.qt_metacall(QMetaObject::InvokeMetaMethod, offset + 15, arguments) < 0);
    QCOMPARE(result, NImageUtils::getExportExtension("dng", "png"));
    arguments[0] = nullptr; // nobody wants the result
    QVERIFY(images.qt_metacall(QMetaObject::InvokeMetaMethod, offset + 15, arguments) < 0);
    QCOMPARE(images.qt_metacall(QMetaObject::InvokeMetaMethod, offset + 23 + 4, arguments), 4);

    TestSupport::LogCapture log; // the constructor describes the screens
    OSUtils os;
    const int osOffset = OSUtils::staticMetaObject.methodOffset();
    for (const auto& [index, expected] :
         {std::pair(5, QMetaType::fromType<QScreen*>()), std::pair(17, QMetaType())}) {
        QMetaType argumentType = QMetaType::fromType<char>();
        int argument = 0;
        void* question[] = {&argumentType, &argument};
        os.qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, osOffset + index, question);
        QVERIFY(argumentType == expected);
    }
    QCOMPARE(QMetaMethod::fromSignal(&OSUtils::showFileError).methodIndex() - osOffset, 4);
    WinUtils win;
    QVERIFY(win.qt_metacast("WinUtils") == &win && win.qt_metacast("QObject") == &win &&
            !win.qt_metacast("OSUtils"));
}

QTEST_GUILESS_MAIN(MetaObjectsTest)
#include "tst_metaobjects.moc"
