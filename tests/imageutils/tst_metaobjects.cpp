// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>
#include <imageutils/mathutils.h>
#include <imageutils/osutils.h>
#include <imageutils/winutils.h>

#include <support/log.h>

#include <QtTest/QTest>

#include <iterator>
#include <type_traits>

namespace {

struct Member
{
    const char* signature;
    const char* result;
    const char* parameters; // names
    QMetaMethod::MethodType kind = QMetaMethod::Method;
    bool cloned = false; // made from default arguments
};
struct Property
{
    const char* name;
    const char* type;
    const char* notifier; // "" for none
    bool constant;
};

constexpr Member imageMembers[] = {
    {"urlToString(QUrl)", "QString", "url"},
    {"stringToUrl(QString)", "QUrl", "string"},
    {"getFilename(QString)", "QString", "filePath"},
    {"getBaseName(QString)", "QString", "filePath"},
    {"getPath(QString)", "QString", "filePath"},
    {"getExtension(QString)", "QString", "filePath"},
    {"isSupportedFile(QString)", "bool", "filePath"},
    {"isRawFile(QString)", "bool", "filePath"},
    {"isRawExt(QString)", "bool", "extension"},
    {"arePathsEqual(QString,QString)", "bool", "filePath,otherFilePath"},
    {"adjustPathWhenOverwriting(QString)", "QString", "outputPath"},
    {"supportedFileFormats()", "QStringList", ""},
    {"nonRawFileFormats()", "QStringList", ""},
    {"rawFileFormats()", "QStringList", ""},
    {"getExportExtension(QString,QString,bool)", "QString",
     "originalExtension,outputExtension,rawExposureOrColorUsed"},
    {"getExportExtension(QString,QString)", "QString", "originalExtension,outputExtension",
     QMetaMethod::Method, true},
    {"getExportExtension(QString)", "QString", "originalExtension", QMetaMethod::Method, true},
    {"imageSize(QString)", "QSize", "path"},
    {"isValidVariant(QVariant)", "bool", "variant"},
    {"isEmpty(QRectF)", "bool", "rect"},
    {"shouldGenerateThumbnail(QString,QString,NExifToolMetadata)", "bool",
     "filepath,thumbnailPath,imageData"},
    {"doesRectCoverRect(QRect,QRect)", "bool", "rect,otherRect"},
    {"getBoundingRect(QRect,double)", "QRect", "rect,rotation"},
};
constexpr Member osMembers[] = {
    {"devicePixelRatioChanged()", "void", "", QMetaMethod::Signal},
    {"maxWidthChanged()", "void", "", QMetaMethod::Signal},
    {"maxHeightChanged()", "void", "", QMetaMethod::Signal},
    {"fileMissing(QString)", "void", "path", QMetaMethod::Signal},
    {"showFileError(QString)", "void", "path", QMetaMethod::Signal},
    {"screenChanged(QScreen*)", "void", "screen", QMetaMethod::Slot},
    {"operatingSystemVersion()", "QString", ""},
    {"getMonitorColorSpace()", "QColorSpace", ""},
    {"fileExists(QUrl)", "bool", "path"},
    {"fileExists(QString)", "bool", "path"},
    {"showFileInGraphicalShell(QUrl)", "void", "path"},
    {"showFileInGraphicalShell(QString)", "void", "path"},
    {"openFolder(QUrl)", "void", "path"},
    {"getAIProcessors()", "QStringList", ""},
    {"generateUuid()", "QString", ""},
    {"getTempDir()", "QString", ""},
    {"geometry()", "QRect", ""},
    {"setGeometry(QRect)", "void", "geometry"},
    {"machineId()", "QString", ""},
    {"gpuList()", "QStringList", ""},
    {"cpuName()", "QString", ""},
    {"freeSpace(QString)", "qulonglong", "path"},
    {"storageName(QString)", "QString", "path"},
    {"logSystemInfo()", "void", ""},
    {"maxGpuVram()", "float", ""},
    {"clearTempFiles()", "void", ""},
    {"clearClipboardTempFiles()", "void", ""},
    {"clearThumbnailTempFiles()", "void", ""},
    {"clipboard()", "QStringList", ""},
    {"isAppleProcessor()", "bool", ""},
    {"keyboardModifiers()", "QFlags<Qt::KeyboardModifier>", ""},
    {"setCursor(QString)", "void", "resourceUrl"},
    {"changeCursor(QString)", "void", "resourceUrl"},
    {"clearCursor()", "void", ""},
    {"mousePosition()", "QPoint", ""},
    {"alert()", "void", ""},
    {"darkMode()", "bool", ""},
    {"getCpuMemory()", "double", ""},
    {"estimateRescueETASeconds(QSize,int)", "int", "inputSize,deviceId"},
    {"writeTextToFile(QString,QString)", "void", "fileName,text"},
};
constexpr Member mathMembers[] = {{"mapBrushSize(float,QSize)", "int", "brushSize,imageSize"}};
constexpr Member winMembers[] = {{"getMonitorColorSpace()", "QColorSpace", "", QMetaMethod::Slot}};

constexpr Property imageProperties[] = {
    {"highConfidenceThreshold", "float", "", true},
    {"lowConfidenceThreshold", "float", "", true},
};
constexpr Property osProperties[] = {
    {"machineId", "QString", "", true},
    {"username", "QString", "", true},
    {"devicePixelRatio", "double", "devicePixelRatioChanged", false},
    {"maxWidth", "int", "maxWidthChanged", false},
    {"maxHeight", "int", "maxHeightChanged", false},
};

template<auto... functions>
constexpr bool areStatic = (!std::is_member_function_pointer_v<decltype(functions)> && ...);
static_assert(
    areStatic<&NImageUtils::urlToString, &NImageUtils::stringToUrl, &NImageUtils::getFilename,
              &NImageUtils::getBaseName, &NImageUtils::getPath, &NImageUtils::getExtension,
              &NImageUtils::isSupportedFile, &NImageUtils::isRawFile, &NImageUtils::isRawExt,
              &NImageUtils::arePathsEqual, &NImageUtils::adjustPathWhenOverwriting,
              &NImageUtils::supportedFileFormats, &NImageUtils::nonRawFileFormats,
              &NImageUtils::rawFileFormats, &NImageUtils::getExportExtension,
              &NImageUtils::imageSize, &NImageUtils::isValidVariant, &NImageUtils::isEmpty,
              &NImageUtils::shouldGenerateThumbnail, &NImageUtils::doesRectCoverRect,
              &NImageUtils::getBoundingRect, &NMathUtils::mapBrushSize,
              &WinUtils::getMonitorColorSpace>);
static_assert(
    areStatic<&OSUtils::getMonitorColorSpace, &OSUtils::generateUuid, &OSUtils::getTempDir,
              &OSUtils::freeSpace, &OSUtils::storageName, &OSUtils::clearTempFiles,
              &OSUtils::clearClipboardTempFiles, &OSUtils::clearThumbnailTempFiles>);
static_assert(!areStatic<&OSUtils::geometry> && !areStatic<&OSUtils::darkMode> &&
              !areStatic<&OSUtils::cpuName>);

} // namespace

Q_DECLARE_METATYPE(const QMetaObject*)
Q_DECLARE_METATYPE(const Member*)

/// What QML and dynamic calls see of the four classes: callers keep the indices, so they never
/// move.
class MetaObjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersKeepTheirPlaces_data();
    void membersKeepTheirPlaces();
    void propertiesKeepTheirFlags();
    void classesCarryTheirNames();
    void dispatchReachesAndPassesOn();
    void signalsHaveIndices();
};

void MetaObjectsTest::membersKeepTheirPlaces_data()
{
    QTest::addColumn<const QMetaObject*>("metaObject");
    QTest::addColumn<int>("index");
    QTest::addColumn<const Member*>("member");
    const auto rows = [](const QMetaObject& metaObject, const auto& members) {
        QCOMPARE(metaObject.methodCount() - metaObject.methodOffset(), int(std::size(members)));
        for (int i = 0; i < int(std::size(members)); ++i)
            QTest::addRow("%s %d %s", metaObject.className(), i, members[i].signature)
                << &metaObject << i << &members[i];
    };
    rows(NImageUtils::staticMetaObject, imageMembers);
    rows(OSUtils::staticMetaObject, osMembers);
    rows(NMathUtils::staticMetaObject, mathMembers);
    rows(WinUtils::staticMetaObject, winMembers);
}

void MetaObjectsTest::membersKeepTheirPlaces()
{
    QFETCH(const QMetaObject*, metaObject);
    QFETCH(int, index);
    QFETCH(const Member*, member);
    const QMetaMethod method = metaObject->method(metaObject->methodOffset() + index);
    QCOMPARE(method.methodSignature(), QByteArray(member->signature));
    QCOMPARE(method.returnMetaType().name(), member->result);
    QCOMPARE(method.parameterNames().join(','), QByteArray(member->parameters));
    QCOMPARE(method.methodType(), member->kind);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(bool(method.attributes() & QMetaMethod::Cloned), member->cloned);
    for (int i = 0; i < method.parameterCount(); ++i)
        QVERIFY(method.parameterMetaType(i).isValid());
}

void MetaObjectsTest::propertiesKeepTheirFlags()
{
    const auto check = [](const QMetaObject& metaObject, const auto& expected, std::size_t count) {
        QCOMPARE(std::size_t(metaObject.propertyCount() - metaObject.propertyOffset()), count);
        for (std::size_t i = 0; i < count; ++i) {
            const QMetaProperty property =
                metaObject.property(metaObject.propertyOffset() + int(i));
            QCOMPARE(property.name(), expected[i].name);
            QCOMPARE(property.metaType().name(), expected[i].type);
            QCOMPARE(property.notifySignal().name(), QByteArray(expected[i].notifier));
            QCOMPARE(property.isConstant(), expected[i].constant);
            QVERIFY(property.isReadable() && property.isDesignable() && property.isScriptable() &&
                    property.isStored());
            QVERIFY(!property.isWritable() && !property.isResettable() && !property.isBindable());
        }
    };
    check(NImageUtils::staticMetaObject, imageProperties, std::size(imageProperties));
    check(OSUtils::staticMetaObject, osProperties, std::size(osProperties));
    check(NMathUtils::staticMetaObject, osProperties, 0);
    check(WinUtils::staticMetaObject, osProperties, 0);
}

void MetaObjectsTest::classesCarryTheirNames()
{
    for (const auto& [metaObject, name, element] :
         {std::tuple(&NImageUtils::staticMetaObject, "NImageUtils", true),
          std::tuple(&OSUtils::staticMetaObject, "OSUtils", true),
          std::tuple(&NMathUtils::staticMetaObject, "NMathUtils", false),
          std::tuple(&WinUtils::staticMetaObject, "WinUtils", false)}) {
        QCOMPARE(metaObject->className(), name);
        QCOMPARE(metaObject->superClass(), &QObject::staticMetaObject);
        QCOMPARE(metaObject->classInfoCount() - metaObject->classInfoOffset(), element ? 1 : 0);
        const int info = metaObject->indexOfClassInfo("QML.Element");
        QCOMPARE(info >= 0 ? metaObject->classInfo(info).value() : "", element ? "auto" : "");
        QVERIFY(metaObject->enumeratorCount() == QObject::staticMetaObject.enumeratorCount() &&
                metaObject->constructorCount() == 0);
    }
    WinUtils win;
    QVERIFY(win.qt_metacast("WinUtils") == &win && win.qt_metacast("QObject") == &win &&
            !win.qt_metacast("OSUtils"));
    QVERIFY(win.parent() == nullptr && NMathUtils().parent() == nullptr);
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
    const QMetaObject& meta = OSUtils::staticMetaObject;
    for (const auto& [index, expected] :
         {std::pair(5, QMetaType::fromType<QScreen*>()), std::pair(17, QMetaType())}) {
        QMetaType argumentType = QMetaType::fromType<char>();
        int argument = 0;
        void* question[] = {&argumentType, &argument};
        os.qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, meta.methodOffset() + index,
                       question);
        QVERIFY(argumentType == expected);
    }
}

void MetaObjectsTest::signalsHaveIndices()
{
    const auto index = [](auto signal) {
        return QMetaMethod::fromSignal(signal).methodIndex() -
               OSUtils::staticMetaObject.methodOffset();
    };
    QCOMPARE(index(&OSUtils::devicePixelRatioChanged), 0);
    QCOMPARE(index(&OSUtils::maxWidthChanged), 1);
    QCOMPARE(index(&OSUtils::maxHeightChanged), 2);
    QCOMPARE(index(&OSUtils::fileMissing), 3);
    QCOMPARE(index(&OSUtils::showFileError), 4);
}

QTEST_GUILESS_MAIN(MetaObjectsTest)
#include "tst_metaobjects.moc"
