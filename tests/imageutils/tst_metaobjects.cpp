// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>
#include <imageutils/mathutils.h>
#include <imageutils/osutils.h>
#include <imageutils/winutils.h>

#include <support/log.h>

#include <QtTest/QTest>

#include <type_traits>

namespace {

/// A line for the class, one for each member of its own, in order: kind, result, name, types and
/// names of the arguments; "+" for a form made from default arguments. Then its properties and its
/// class information.
QByteArrayList describe(const QMetaObject& meta)
{
    QByteArrayList lines = {QByteArray(meta.className()) + " : " + meta.superClass()->className()};
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod m = meta.method(i);
        QByteArrayList arguments;
        for (int k = 0; k < m.parameterCount(); ++k)
            arguments += m.parameterMetaType(k).name() + (' ' + m.parameterNames()[k]);
        const char* const kinds[] = {"", "signal ", "slot ", "constructor "};
        lines += (m.attributes() & QMetaMethod::Cloned ? "+" : "") +
                 QByteArray(kinds[m.methodType()]) + m.returnMetaType().name() + ' ' + m.name() +
                 '(' + arguments.join(", ") +
                 (m.access() == QMetaMethod::Public ? ")" : ") not public");
    }
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty p = meta.property(i);
        const bool plain = p.isReadable() && p.isDesignable() && p.isScriptable() && p.isStored() &&
                           !p.isWritable() && !p.isResettable() && !p.isBindable();
        lines += QByteArray(plain ? "property " : "not plain ") + p.metaType().name() + ' ' +
                 p.name() + (p.isConstant() ? " constant" : ' ' + p.notifySignal().name());
    }
    for (int i = meta.classInfoOffset(); i < meta.classInfoCount(); ++i)
        lines += meta.classInfo(i).name() + QByteArray("=") + meta.classInfo(i).value();
    return lines;
}

// clang-format off
const char* const members[] = {
    "NImageUtils : QObject",
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
    "OSUtils : QObject",
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
    "NMathUtils : QObject", "int mapBrushSize(float brushSize, QSize imageSize)",
    "WinUtils : QObject", "slot QColorSpace getMonitorColorSpace()",
};
// clang-format on

template<auto... functions>
constexpr bool areStatic = (!std::is_member_function_pointer_v<decltype(functions)> && ...);
using O = OSUtils;
static_assert(areStatic<&O::getMonitorColorSpace, &O::generateUuid, &O::getTempDir, &O::freeSpace,
                        &O::storageName, &O::clearTempFiles, &O::clearClipboardTempFiles,
                        &O::clearThumbnailTempFiles, &WinUtils::getMonitorColorSpace>);

} // namespace

/// What QML and dynamic calls see of the four classes: callers keep the indices.
class MetaObjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersKeepTheirPlaces();
    void dispatchReachesAndPassesOn();
};

void MetaObjectsTest::membersKeepTheirPlaces()
{
    QByteArrayList found;
    for (const QMetaObject* const meta :
         {&NImageUtils::staticMetaObject, &OSUtils::staticMetaObject, &NMathUtils::staticMetaObject,
          &WinUtils::staticMetaObject}) {
        found += describe(*meta);
        QVERIFY(meta->enumeratorCount() == meta->enumeratorOffset() &&
                meta->constructorCount() == 0);
    }
    QCOMPARE(found, QByteArrayList(std::begin(members), std::end(members)));
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
    arguments[0] = nullptr; // the result is not used
    QVERIFY(images.qt_metacall(QMetaObject::InvokeMetaMethod, offset + 15, arguments) < 0);
    QCOMPARE(images.qt_metacall(QMetaObject::InvokeMetaMethod, offset + 23 + 4, arguments), 4);

    TestSupport::LogCapture log; // the constructor describes the screens
    OSUtils os;
    const int osOffset = OSUtils::staticMetaObject.methodOffset();
    QMetaType type;
    int argument = 0;
    void* question[] = {&type, &argument};
    os.qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, osOffset + 5, question);
    QVERIFY(type == QMetaType::fromType<QScreen*>());
    os.qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, osOffset + 17, question);
    QVERIFY(!type.isValid());
    QCOMPARE(QMetaMethod::fromSignal(&OSUtils::showFileError).methodIndex() - osOffset, 4);
    WinUtils win;
    QVERIFY(win.qt_metacast("WinUtils") == &win && win.qt_metacast("QObject") == &win &&
            !win.qt_metacast("OSUtils"));
}

QTEST_GUILESS_MAIN(MetaObjectsTest)
#include "tst_metaobjects.moc"
