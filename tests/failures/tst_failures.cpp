// SPDX-License-Identifier: Apache-2.0
//
// Every operation, with each of its allocations and each of its calls for files failing in turn,
// alone or with all later ones: the result is whole or neutral, no exception comes out where none
// may, nothing stays open, and the same operation succeeds afterwards. With
// IMAGEUTILS_PICTURES=FOLDER the matrices are many, and each file of the folder is read.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>
#include <metadatareader/metadatareader.h>

#include <support/failingcalls.h>
#include <support/matrices.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <opencv2/imgproc.hpp>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <unistd.h>

using FailingCalls::Kind;

namespace {

/// An operation as text: its result, "" if it is neutral.
using Operation = std::function<QByteArray()>;

QByteArray textOf(const cv::Mat& mat)
{
    const std::vector<unsigned char> bytes = CvUtils::serializeMat(mat);
    return mat.empty()
               ? QByteArray()
               : QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
}

QByteArray textOf(const QImage& image)
{
    return {reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()};
}

QByteArray textOf(const QStringList& texts) // with the contents of the files that they name
{
    QByteArray text = texts.join(u' ').toUtf8();
    for (const QString& path : texts) {
        if (QFile file(path); file.open(QIODevice::ReadOnly))
            text += file.readAll();
    }
    return text;
}

QByteArray textOf(const NExifToolMetadata& metadata)
{
    return metadata.imageWidth() == 0
               ? QByteArray()
               : metadata.fileType().toUtf8() + QByteArray::number(metadata.imageWidth());
}

QByteArray textOf(const QVariant& value)
{
    const QSize size = value.toSize();
    if (value.typeId() == QMetaType::QSize)
        return size.isValid() ? QByteArray::number(size.width()) : QByteArray();
    if (value.typeId() == QMetaType::QVariantList)
        return QByteArray::number(NImageUtils::hashVariant(value));
    return value.toBool() ? value.toString().toUtf8() : QByteArray(); // "" for false and 0
}

/// `call` as an operation whose result becomes text after the failing has ended.
template<typename Call>
Operation operationOf(const Call& call)
{
    return [call]() -> QByteArray {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
            FailingCalls::disarm();
            return {};
        } else {
            const auto result = call();
            FailingCalls::disarm();
            return textOf(result);
        }
    };
}

} // namespace

class FailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sizesWhoseTableGrows_data();
    void sizesWhoseTableGrows() { failEach(Kind::Allocation, {ENOMEM}); }
    void allocations_data() { addOperations(Kind::Allocation); }
    void allocations() { failEach(Kind::Allocation, {ENOMEM}); }
    void files_data() { addOperations(Kind::File); }
    void files() { failEach(Kind::File, {EIO, ENOSPC, EINTR, EACCES, EMFILE}); }

private:
    void addOperations(Kind kind);
    void addMatrices();
    void addMatOperations(const cv::Mat& mat);
    void addPictureOperations(Kind kind, const QString& folder, const QStringList& names);
    void addQtOperations();
    void addFileOperations();
    void failEach(Kind kind, const QList<int>& errors);
    QString pathOf(int number) const
    {
        return m_folder.path() + QString("/.").repeated(number) + "/a.jpg";
    }
    template<typename Call>
    void add(const QByteArray& name, bool mayThrow, const Call& call)
    {
        QTest::newRow(name) << mayThrow << operationOf(call);
    }

    QTemporaryDir m_folder;
    const QString m_pictures = qEnvironmentVariable("IMAGEUTILS_PICTURES");
    const pid_t m_parent = getpid();
};

Q_DECLARE_METATYPE(Operation)

void FailuresTest::initTestCase()
{
    cv::setNumThreads(1); // a forked child has no other threads
    qputenv("TMPDIR", m_folder.path().toUtf8());
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (const char* const name : {"a.jpg", "a.png"})
        QVERIFY(image.save(m_folder.filePath(name)));
    QGuiApplication::clipboard()->setImage(image);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

// The table of a QCache takes memory for the first record, the 49th and the 65th, and ends the
// program where it gets none.
void FailuresTest::sizesWhoseTableGrows_data()
{
    QTest::addColumn<bool>("mayThrow");
    QTest::addColumn<Operation>("operation");
    for (int i = 0; i < 47; ++i)
        NImageUtils::imageSize(pathOf(i));
    add("imageSize", false, [this, first = pathOf(47), later = pathOf(48)] {
        return QVariant(NImageUtils::imageSize(getpid() == m_parent ? first : later));
    });
}

void FailuresTest::addOperations(Kind kind)
{
    QTest::addColumn<bool>("mayThrow");
    QTest::addColumn<Operation>("operation");
    if (kind == Kind::Allocation) // operations on matrices call nothing for files
        addMatrices();
    addPictureOperations(kind, m_folder.path(), {"a.jpg", "a.png"});
    if (!m_pictures.isEmpty())
        addPictureOperations(kind, m_pictures, QDir(m_pictures).entryList(QDir::Files));
    addQtOperations();
    if (kind == Kind::File)
        addFileOperations();
    if (qgetenv("IMAGEUTILS_PLANT") == "yes") // to show that both kinds of faults are found
        add("planted", false, [] {
            const auto memory = std::make_unique<char[]>(1000);
            const int first = ::open("/dev/null", O_RDONLY), second = ::open("/dev/null", O_RDONLY);
            if (second < 0)
                return QVariant(); // leaves the first one open
            ::close(first);
            ::close(second);
            return QVariant("planted");
        });
}

void FailuresTest::addMatrices()
{
    const QList<cv::Size> sizes{{30, 20}, {1, 1},   {9, 200}, {300, 150},
                                {64, 48}, {200, 3}, {17, 17}, {1, 40}};
    const int count = qEnvironmentVariableIntValue("IMAGEUTILS_SIZES");
    const QList<int> types =
        count > 0 ? QList<int>{CV_8UC1,  CV_8UC2,  CV_8UC3,  CV_8UC4,  CV_16UC1, CV_16UC2,
                               CV_16UC3, CV_16UC4, CV_32FC1, CV_32FC2, CV_32FC3, CV_32FC4}
                  : QList<int>{CV_32FC3, CV_32FC4};
    for (const int type : types) {
        for (const cv::Size size : sizes.first(std::max(1, count)))
            addMatOperations(TestSupport::noise(size.height, size.width, type));
    }
}

void FailuresTest::addMatOperations(const cv::Mat& mat)
{
    const QByteArray kind = QByteArray::fromStdString(cv::typeToString(mat.type())) + ' ' +
                            QByteArray::number(mat.cols) + 'x' + QByteArray::number(mat.rows);
    const auto addOf = [&](const char* name, const auto& call) {
        add(name + (' ' + kind), true, call);
    };
    const int channels = mat.channels();
    addOf("convert", [=] { return CvUtils::convert(mat, CV_16U); });
    addOf("resize", [=] { return CvUtils::resize(mat, 0.6, 0, 0, 0, 0, 0.5F); });
    addOf("upsample", [=] { return CvUtils::upsample(mat, 3, 0, 0, 2); });
    addOf("serializeMat", [=] {
        return CvUtils::deserializeMat(
            CvUtils::base64Decode(CvUtils::base64Encode(CvUtils::serializeMat(mat))));
    });
    addOf("applyRotation", [=] { return CvUtils::applyRotation(mat, {{15, 10}, {9, 8}, 30}); });
    addOf("getRotatedRect", [=] {
        return CvUtils::applyRotation(mat, CvUtils::getRotatedRect({0, 0, mat.cols, mat.rows}, 10));
    });
    addOf("similarity", [=] { return QVariant(CvUtils::similarity(mat, mat)); });
    addOf("matToList", [=] { return QVariant(CvUtils::matToList(mat)); });
    addOf("isMonochrome", [=] { return QVariant(CvUtils::isMonochrome(mat)); });
    addOf("isLumaNoise", [=] { return QVariant(CvUtils::isLumaNoise(mat)); });
    addOf("toMonochrome", [=] {
        cv::Mat grey = mat.clone();
        CvUtils::toMonochrome(grey);
        return grey;
    });
    if (channels == 4) {
        addOf("splitChromaAlpha", [=] {
            cv::Mat chroma, alpha;
            CvUtils::splitChromaAlpha(mat, chroma, alpha);
            return CvUtils::mergeChromaAlpha(chroma, alpha);
        });
        addOf("matToQImage", [=] {
            QImage image = CvUtils::matToQImage(mat, QImage::Format_RGBA32FPx4);
            cv::Mat chroma, alpha;
            return CvUtils::qimageToMat(image, chroma, alpha) ? CvUtils::matToQImage(chroma, alpha)
                                                              : QImage();
        });
    }
    const int toBlueFirst[] = {cv::COLOR_GRAY2BGR, -1, cv::COLOR_RGB2BGR, cv::COLOR_RGBA2BGR};
    if (channels != 2)
        addOf("imwrite", [=, path = m_folder.filePath("written.bmp")] {
            CvUtils::imwrite(path, mat, toBlueFirst[channels - 1], 255, 0, 1);
        });
}

// What OpenImageIO reads ends the program where an allocation in one of its constructors fails.
void FailuresTest::addPictureOperations(Kind kind, const QString& folder, const QStringList& names)
{
    const QString again = m_folder.filePath(QString::number(qHash(folder)));
    QFile::link(folder,
                again); // the forked children use other names, so that the cache has no answer
    for (const QString& name : names) {
        const QString path = folder + '/' + name, other = again + '/' + name;
        const bool isOurs = name.contains(QRegularExpression("\\.(jpg|heic|avif|hif|jp2|j2k)$")) &&
                            !name.contains(QRegularExpression("asks|openimageio.jp2|7 False"));
        if (kind == Kind::File || isOurs)
            add("imageSize " + name.toUtf8(), false, [=, this] {
                return QVariant(NImageUtils::imageSize(getpid() == m_parent ? path : other));
            });
        if (kind == Kind::File)
            add("readMetadata " + name.toUtf8(), true, [=] { return readMetadata(path); });
    }
}

void FailuresTest::addQtOperations()
{
    const auto utils = std::make_shared<OSUtils>();
    const QVariantMap map{{"a", 1}, {"b", QVariantList{"c", 2.5}}, {"d", QSize(1, 2)}};
    const QString photo = m_folder.filePath("a.jpg");
    add("hashParams", true, [=] { return QVariant(NImageUtils::hashParams(map)); });
    add("writeTextToFile", false,
        [=, text = m_folder.filePath("text")] { utils->writeTextToFile(text, text); });
    add("pasted bitmap", false, [=] { return utils->clipboard(); });
    add("generateUuid", false, [=] { return QVariant(utils->generateUuid().size()); });
    add("fileExists", false,
        [=, url = QUrl::fromLocalFile(photo)] { return QVariant(utils->fileExists(url)); });
    add("freeSpace", false, [=] { return QVariant(OSUtils::freeSpace(photo) > 0); });
}

void FailuresTest::addFileOperations()
{
    add("imwrite", true,
        [path = m_folder.filePath("written.bmp"), mat = TestSupport::noise(20, 30, CV_32FC3)] {
            QFile::remove(path);
            CvUtils::imwrite(path, mat, cv::COLOR_RGB2BGR, 255, 0, 1);
        });
    add("clearTempFiles", false,
        [] { OSUtils::clearTempFiles(); }); // QSettings may crash without memory
}

void FailuresTest::failEach(Kind kind, const QList<int>& errors)
{
    QFETCH(const bool, mayThrow);
    QFETCH(const Operation, operation);
    // Qt's libraries are built without exceptions, so one that passes their writers leaves a lock.
    const bool keepsLock =
        kind == Kind::Allocation && QTest::currentDataTag() == QByteArray("pasted bitmap");
    const auto result = [&] {
        try {
            return operation();
        } catch (const std::exception&) {
            FailingCalls::disarm();
            if (!mayThrow)
                throw;
            return QByteArray();
        }
    };
    const QByteArray expected = result();
    const auto attempt = [&]() -> std::string {
        const QByteArray found = result();
        if (!found.isEmpty() && found != expected)
            return "gives another result";
        return keepsLock || !FailingCalls::hasFailed() || result() == expected
                   ? ""
                   : "gives no result later";
    };
    QStringList wrong;
    int failures = 0;
    for (const int error : errors) {
        for (const bool forGood : {false, true}) {
            if (forGood && error == EINTR)
                continue; // an interrupted call is rightly made again
            bool failed = true;
            for (int call = 1; failed; ++call, failures += failed) {
                const auto outcome = FailingCalls::run({kind, call, error, forGood}, attempt);
                failed = outcome.failed;
                if (!outcome.wrong.empty())
                    wrong.append(QStringLiteral("call %1%2 with error %3 %4")
                                     .arg(call)
                                     .arg(forGood ? " and later ones" : "")
                                     .arg(error)
                                     .arg(outcome.wrong.c_str()));
            }
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.mid(0, 5).join(u'\n')));
    std::printf("%d failures: %s\n", failures, QTest::currentDataTag());
}

QTEST_MAIN(FailuresTest)
#include "tst_failures.moc"
