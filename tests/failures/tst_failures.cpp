// SPDX-License-Identifier: Apache-2.0
//
// Every operation, with each of its allocations and each of its calls for files failing in turn:
// the result is whole or neutral, no exception comes out where none may, nothing stays open, and
// the same operation succeeds afterwards.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>
#include <metadatareader/metadatareader.h>

#include <support/failingcalls.h>
#include <support/matrices.h>

#include <QtCore/QDir>
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

QByteArray bytesOf(const cv::Mat& mat)
{
    const std::vector<unsigned char> bytes = CvUtils::serializeMat(mat);
    return mat.empty()
               ? QByteArray()
               : QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
}

QByteArray bytesOf(const QImage& image)
{
    return {reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()};
}

} // namespace

class FailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void allocations_data() { addOperations(Kind::Allocation); }
    void allocations() { failEach(Kind::Allocation, {ENOMEM}); }
    void files_data() { addOperations(Kind::File); }
    void files() { failEach(Kind::File, {EIO, ENOSPC, EINTR, EACCES, EMFILE}); }

private:
    void addOperations(Kind kind);
    void addQtOperations(Kind kind);
    void failEach(Kind kind, const QList<int>& errors);
    void add(const char* name, bool mayThrow, const Operation& operation)
    {
        QTest::newRow(name) << mayThrow << operation;
    }

    QTemporaryDir m_folder;
    const pid_t m_parent = getpid();
};

Q_DECLARE_METATYPE(Operation)

void FailuresTest::initTestCase()
{
    cv::setNumThreads(1); // a forked child has no other threads
    qputenv("TMPDIR", m_folder.path().toUtf8());
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (const char* const name : {"a.jpg", "b.jpg", "a.png", "b.png"})
        QVERIFY(image.save(m_folder.filePath(name)));
    QGuiApplication::clipboard()->setImage(image);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

void FailuresTest::addOperations(Kind kind)
{
    QTest::addColumn<bool>("mayThrow");
    QTest::addColumn<Operation>("operation");
    const cv::Mat colours = TestSupport::noise(20, 30, CV_32FC3);
    const cv::Mat pixels = TestSupport::noise(20, 30, CV_32FC4);
    add("resize", true, [=] { return bytesOf(CvUtils::resize(colours, 0.6, 0, 0, 0, 0, 0.5F)); });
    add("upsample", true, [=] { return bytesOf(CvUtils::upsample(colours, 3, 0, 0, 2)); });
    add("convert", true, [=] { return bytesOf(CvUtils::convert(colours, CV_16U)); });
    add("planes", true, [=] {
        cv::Mat chroma, alpha;
        CvUtils::splitChromaAlpha(pixels, chroma, alpha);
        return bytesOf(CvUtils::mergeChromaAlpha(chroma, alpha));
    });
    add("images", true, [=] {
        QImage image = CvUtils::matToQImage(pixels, QImage::Format_RGBA32FPx4);
        cv::Mat chroma, alpha;
        return CvUtils::qimageToMat(image, chroma, alpha)
                   ? bytesOf(CvUtils::matToQImage(chroma, alpha))
                   : QByteArray();
    });
    add("analysis", true, [=] {
        return CvUtils::isMonochrome(colours) || CvUtils::isLumaNoise(colours) ? "yes" : "no";
    });
    add("applyRotation", true, [=] {
        return bytesOf(CvUtils::applyRotation(colours, cv::RotatedRect({15, 10}, {9, 8}, 30)));
    });
    add("base64", true, [=] {
        const cv::Mat mat = CvUtils::deserializeMat(
            CvUtils::base64Decode(CvUtils::base64Encode(CvUtils::serializeMat(colours))));
        return bytesOf(mat);
    });
    add("imwrite", true, [=, this] {
        const QString path = m_folder.filePath("written.bmp");
        QFile::remove(path);
        CvUtils::imwrite(path, colours, cv::COLOR_RGB2BGR, 255, 0, 1);
        return QByteArray();
    });
    addQtOperations(kind);
    if (qgetenv("IMAGEUTILS_PLANT") == "yes") // to show that both kinds of faults are found
        add("planted", false, [] {
            const auto memory = std::make_unique<char[]>(1000);
            const int first = ::open("/dev/null", O_RDONLY), second = ::open("/dev/null", O_RDONLY);
            if (second < 0)
                return QByteArray(); // leaves the first one open
            ::close(first);
            ::close(second);
            return QByteArray("planted", memory ? 7 : 0);
        });
}

// Arguments are made before and results are converted after a call, whose own allocations fail.
void FailuresTest::addQtOperations(Kind kind)
{
    const auto utils = std::make_shared<OSUtils>();
    for (const QString suffix : {"jpg", "png"}) {
        if (suffix == "png" && kind == Kind::Allocation)
            continue; // so does OpenImageIO
        // The forked children ask for another file, so that the cache has no answer.
        const QString first = m_folder.filePath("a." + suffix),
                      other = m_folder.filePath("b." + suffix);
        add(qPrintable("imageSize " + suffix), false, [=, this] {
            const QSize size = NImageUtils::imageSize(getpid() == m_parent ? first : other);
            FailingCalls::disarm();
            return size.isValid() ? QByteArray::number(size.width()) : QByteArray();
        });
    }
    const QVariantMap map{{"a", 1}, {"b", QVariantList{"c", 2.5}}, {"d", QSize(1, 2)}};
    add("hashParams", true, [=] {
        const quint64 key = NImageUtils::hashParams(map);
        FailingCalls::disarm();
        return key == 0 ? QByteArray() : QByteArray::number(key);
    });
    const QString photo = m_folder.filePath("a.jpg"), text = m_folder.filePath("text");
    add("writeTextToFile", false, [=] {
        utils->writeTextToFile(text, text);
        FailingCalls::disarm();
        return QByteArray();
    });
    add("pasted bitmap", false, [=] {
        const QStringList paths = utils->clipboard();
        FailingCalls::disarm();
        return paths.join(' ').toUtf8();
    });
    add("generateUuid", false, [=] {
        const QString uuid = utils->generateUuid();
        FailingCalls::disarm();
        return QByteArray(uuid.size() == 36 ? "UUID" : "");
    });
    add("fileExists", false, [=, url = QUrl(photo)] {
        const bool exists = utils->fileExists(url);
        FailingCalls::disarm();
        return QByteArray(exists ? "exists" : "");
    });
    add("disk", false, [=] {
        const quint64 bytes = OSUtils::freeSpace(text);
        FailingCalls::disarm();
        return QByteArray(bytes > 0 ? "free" : "");
    });
    if (kind == Kind::Allocation)
        return; // the constructors of QSettings and OpenImageIO crash when an allocation in them
                // fails
    add("readMetadata", true, [=] {
        const NExifToolMetadata metadata = readMetadata(photo);
        FailingCalls::disarm();
        return metadata.fileType().toUtf8();
    });
    add("clean-up", false, [] {
        OSUtils::clearTempFiles();
        FailingCalls::disarm();
        return QByteArray();
    });
}

void FailuresTest::failEach(Kind kind, const QList<int>& errors)
{
    QFETCH(const bool, mayThrow);
    QFETCH(const Operation, operation);
    const QByteArray expected = operation();
    QStringList wrong;
    int failures = 0;
    for (const int error : errors) {
        for (int call = 1;; ++call) {
            const auto outcome = FailingCalls::run(kind, call, error, [&]() -> std::string {
                QByteArray result;
                try {
                    result = operation();
                } catch (const std::exception&) {
                    if (!mayThrow)
                        throw;
                }
                return result.isEmpty() || result == expected ? "" : "gives another result";
            });
            if (!outcome.wrong.empty())
                wrong.append(QStringLiteral("call %1 with error %2 %3")
                                 .arg(call)
                                 .arg(error)
                                 .arg(outcome.wrong.c_str()));
            if (!outcome.failed)
                break;
            ++failures;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.mid(0, 5).join(u'\n')));
    std::printf("%d failures: %s\n", failures, QTest::currentDataTag());
}

QTEST_MAIN(FailuresTest)
#include "tst_failures.moc"
