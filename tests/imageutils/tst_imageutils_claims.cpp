// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/readers.h>

#include <QtTest/QTest>

#include <algorithm>

namespace {

constexpr qint64 mostBytes = 1 << 26, mostBlocks = 4096;
const QByteArray Left = "left", Refused = "refused";

QByteArray little(qint64 number, int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += char(number >> 8 * i);
    return bytes;
}

QByteArray big(qint64 number, int count)
{
    QByteArray bytes = little(number, count);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

QByteArray gifFrame(int width, int height)
{
    return ',' + little(0, 4) + little(width, 2) + little(height, 2);
}

QByteArray gif(int width, int height, const QByteArray& rest, int flags = 7)
{
    return "GIF89a" + little(width, 2) + little(height, 2) + char(flags) + little(0, 2) + rest;
}

QByteArray chunk(const QByteArray& type, qint64 length, const QByteArray& content = {})
{
    return big(length, 4) + type + content + QByteArray(length - content.size() + 4, 0);
}

QByteArray png(const QByteArray& chunks)
{
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", 13, big(40, 4) + big(30, 4)) + chunks;
}

QByteArray attribute(const QByteArray& name, const QByteArray& content, qint64 length = -1)
{
    return name + '\0' + "type" + '\0' + little(length < 0 ? content.size() : length, 4) + content;
}

/// The window of 40 x `height` pixels does not begin at 0.
QByteArray window(int height, int tileWidth = -1, int tileHeight = -1)
{
    const QByteArray tiles = little(tileWidth, 4) + little(tileHeight, 4) + '\0';
    return attribute("dataWindow",
                     little(5, 4) + little(-7, 4) + little(44, 4) + little(height - 8, 4)) +
           (tileWidth < 0 ? QByteArray() : attribute("tiles", tiles));
}

QByteArray exr(const QByteArray& attributes, int flags = 2)
{
    return "\x76\x2f\x31\x01" + little(flags, 4) + attributes + '\0';
}

QByteArray psdBlock(int id, qint64 length, const QByteArray& content = {}, const char* name = "")
{
    const QByteArray text = QByteArray(1, char(qstrlen(name))) + name;
    return "8BIM" + big(id, 2) + text + QByteArray(text.size() % 2, 0) + big(length, 4) + content;
}

/// `missing` bytes of the blocks lie behind the end that the file says.
QByteArray psd(const QByteArray& blocks, qint64 missing = 0, int colours = 0)
{
    return "8BPS" + QByteArray(22, 0) + big(colours, 4) + QByteArray(colours, 1) +
           big(blocks.size() - missing, 4) + blocks;
}

QByteArray preview(int width, int height)
{
    return QByteArray(28, 0) + QByteArray::fromHex("ffd8ffc0000b08") + big(height, 2) +
           big(width, 2) + QByteArray::fromHex("01011100ffda0008010100003f00") + QByteArray(50, 0);
}

/// A directory of one entry at 8, and where `next` is not empty, that one behind it.
QByteArray entry(int tag, int type, qint64 count, qint64 value = 0)
{
    return little(tag, 2) + little(type, 2) + little(count, 4) + little(value, 4);
}

QByteArray directory(const QByteArrayList& entries)
{
    return little(entries.size(), 2) + entries.join() + little(0, 4);
}

QByteArray tiff(const QByteArray& directories)
{
    return "II*" + QByteArray(1, 0) + little(8, 4) + directories;
}

QByteArray bigTiff(qint64 at, qint64 count, int type = 7)
{
    return "MM" + big(43, 2) + big(8, 2) + big(0, 2) + big(at, 8) + big(2, 8) + QByteArray(20, 0) +
           big(256, 2) + big(type, 2) + big(count, 8);
}

QByteArray film(const char* start, int at, const QByteArray& length)
{
    return QByteArray(start).leftJustified(at, 0) + length + QByteArray(9, 0);
}

} // namespace

/// What the readers of `headers/claims.cpp` answer or refuse, and what they leave to OpenImageIO,
/// on both sides of each of their bounds.
class ImageUtilsClaimsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersOnlyVastClaims_data();
    void answersOnlyVastClaims();

private:
    static void addPaletted();
    static void addPng();
    static void addExr();
    static void addPsd();
    static void addTiff();
    static void addOthers();
};

namespace {

/// A file that goes on with zeros up to `end`.
void row(const char* name, const QByteArray& bytes, const QByteArray& answer, qint64 end = 0)
{
    QTest::newRow(name) << bytes << qMax(end, qint64(bytes.size())) << answer;
}

} // namespace

void ImageUtilsClaimsTest::answersOnlyVastClaims_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("end");
    QTest::addColumn<QByteArray>("answer");
    addPaletted();
    addPng();
    addExr();
    addPsd();
    addTiff();
    addOthers();
}

void ImageUtilsClaimsTest::addPaletted()
{
    const QByteArray comment("!\xfe\1x\0", 5), frame = gifFrame(4097, 4096), small = gifFrame(9, 9);
    row("GIF screen", gif(4096, 4096, {}), Left);
    row("GIF larger screen", gif(4097, 4096, {}), "4097 x 4096");
    row("GIF without width", gif(0, 9, frame), Refused);
    row("GIF frame", gif(10, 20, gifFrame(4096, 4096)), Left);
    row("GIF larger frame", gif(10, 20, frame), "10 x 20");
    row("GIF table of 4 colours", gif(10, 20, QByteArray(12, 0) + frame, 0x81), "10 x 20");
    row("GIF comment", gif(10, 20, comment + frame), "10 x 20");
    row("GIF comments", gif(10, 20, comment.repeated(mostBlocks) + small), Left);
    row("GIF more comments", gif(10, 20, comment.repeated(mostBlocks + 1) + small), "10 x 20");
    for (int more : {0, 1})
        row(more ? "GIF long comment" : "GIF comment at the bound",
            gif(10, 20, "!\xfe" + QByteArray("\1x").repeated(65535 + more) + '\0' + small),
            more ? "10 x 20" : Left);
}

void ImageUtilsClaimsTest::addPng()
{
    const QByteArray expanded = chunk("zTXt", 7752).repeated(7) + chunk("iTXt", 7752);
    row("PNG texts", png(expanded + chunk("iCCP", 3012) + chunk("IDAT", 0)), Left);
    row("PNG more texts", png(expanded + chunk("iCCP", 3013) + chunk("IDAT", 0)), "40 x 30");
    const QByteArray empty = chunk("zzZz", 0);
    row("PNG blocks", png(empty.repeated(mostBlocks - 2) + chunk("IDAT", 0)), Left);
    row("PNG more blocks", png(empty.repeated(mostBlocks - 1) + chunk("IDAT", 0)), "40 x 30");
    row("PNG blocks behind its end", png(chunk("IEND", 0) + empty.repeated(mostBlocks)), Left);
    row("PNG long block", png(big(mostBytes - 13, 4) + "tEXt"), Left);
    row("PNG longer block", png(big(mostBytes - 12, 4) + "tEXt"), "40 x 30");
}

void ImageUtilsClaimsTest::addExr()
{
    row("EXR lines", exr(window(1 << 22)), Left);
    row("EXR more lines", exr(window((1 << 22) + 1)), "40 x 4194305");
    row("EXR tiles", exr(window(838861, 4, 2)), Left);
    row("EXR more tiles", exr(window(838862, 4, 2)), "40 x 838862");
    row("EXR few large tiles", exr(window(1 << 30, 64, 1 << 30)), Left);
    row("EXR tiles without sides", exr(window(104857, 0, 0)), Left);
    row("EXR more tiles without sides", exr(window(104858, 0, 0)), "40 x 104858");
    const QByteArray second = '\0' + window(1 << 23);
    row("EXR one part", exr(window(30) + second), Left);
    row("EXR second part", exr(window(30) + second, 0x1002), "40 x 8388608");
    row("EXR no second part", exr(window(30), 0x1002), Left);
    const QByteArray start = exr({}).chopped(1);
    row("EXR long attribute", start + attribute("a", {}, mostBytes - 19), Left);
    row("EXR longer attribute", start + attribute("a", {}, mostBytes - 18), Refused);
    row("EXR attributes", exr(attribute("a", "1").repeated(mostBlocks - 1)), Left);
    row("EXR more attributes", exr(attribute("a", "1").repeated(mostBlocks)), Refused);
    row("EXR long name", exr(attribute(QByteArray(255, 'n'), "1") + window(1 << 23)),
        "40 x 8388608");
}

void ImageUtilsClaimsTest::addPsd()
{
    const QByteArray claimed = psdBlock(1033, 12, big(1, 4) + big(4097, 4) + big(4096, 4));
    const auto shown = [](int id, int width, const char* name = "") {
        const QByteArray content = preview(width, 4096);
        return psdBlock(id, content.size(), content, name);
    };
    row("PSD preview", psd(shown(1036, 4096)), Left);
    row("PSD larger preview", psd(shown(1036, 4097)), Refused);
    row("PSD older preview", psd(shown(1033, 4097)), Refused);
    row("PSD another block", psd(shown(1035, 4097)), Left);
    row("PSD claim", psd(psdBlock(1033, 12, big(1, 4) + big(4096, 4) + big(4096, 4))), Left);
    row("PSD larger claim", psd(claimed), Refused);
    row("PSD colours", psd(claimed, 0, 768), Refused);
    row("PSD name", psd(psdBlock(1, 0, {}, "odd") + psdBlock(1, 0, {}, "even") + claimed), Refused);
    row("PSD odd block", psd(psdBlock(1, 3, "odd ") + claimed), Refused);
    row("PSD block behind the end", psd(psdBlock(1, 2, "  ") + claimed, claimed.size()), Left);
    row("PSD long preview", psd(psdBlock(1036, 1 << 23)), Left, 1 << 24);
    row("PSD longer preview", psd(psdBlock(1036, (1 << 23) + 1)), Refused, 1 << 24);
    row("PSD long block", psd(psdBlock(1, mostBytes - 46)), Left);
    row("PSD longer block", psd(psdBlock(1, mostBytes - 45)), Refused);
    row("PSD blocks", psd(psdBlock(1, 0).repeated(mostBlocks - 1)), Left);
    row("PSD more blocks", psd(psdBlock(1, 0).repeated(mostBlocks)), Refused);
}

void ImageUtilsClaimsTest::addTiff()
{
    constexpr int sizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8, 0};
    for (int type = 0; type < std::ssize(sizes); ++type) {
        const qint64 most = mostBytes / qMax(sizes[type], 1);
        for (qint64 more : {0, 1}) {
            const bool isVast = more && (sizes[type] || most + more > mostBytes);
            row(qPrintable(QStringLiteral("TIFF %1 of type %2").arg(most + more).arg(type)),
                tiff(directory({entry(256, type, most + more)})), isVast ? Refused : Left);
        }
    }
    const QByteArray half = entry(256, 7, mostBytes / 2);
    const QByteArray vast = directory({entry(37500, 7, mostBytes + 1)});
    row("TIFF sum", tiff(directory({half, half})), Left);
    row("TIFF larger sum", tiff(directory({half, entry(257, 7, mostBytes / 2 + 1)})), Refused);
    for (int tag : {34665, 34853, 34866})
        row(qPrintable(QStringLiteral("TIFF directory of %1").arg(tag)),
            tiff(directory({entry(256, 4, 1), entry(tag, 4, 1, 38)}) + vast),
            tag == 34866 ? Left : Refused);
    row("TIFF third level",
        tiff(directory({entry(34665, 4, 1, 26)}) + directory({entry(34665, 4, 1, 44)}) + vast),
        Left);
    const QByteArrayList entries(mostBlocks - 1, entry(256, 4, 1));
    row("TIFF entries", tiff(directory(entries + QByteArrayList{entry(1, 7, 1 << 27)})), Refused);
    row("TIFF more entries", tiff(directory(entries + QByteArrayList{half, entry(1, 7, 1 << 27)})),
        Left);
    row("big TIFF", bigTiff(16, mostBytes), Left);
    row("bigger TIFF", bigTiff(16, mostBytes + 1), Refused);
    row("big TIFF of longer values", bigTiff(16, (mostBytes >> 3) + 1, 16), Refused);
    row("big TIFF with a negative count", bigTiff(16, -1, 0), Refused);
    row("big TIFF with a negative place", bigTiff(-16, mostBytes + 1), Left);
}

void ImageUtilsClaimsTest::addOthers()
{
    const struct
    {
        const char* start;
        int at;
        bool isBig;
    } films[] = {{"\x80\x2a\x5f\xd7", 16, true},
                 {"\xd7\x5f\x2a\x80", 16, false},
                 {"SDPX", 32, true},
                 {"XPDS", 32, false}};
    for (const auto& [start, at, isBig] : films) {
        for (qint64 length : {mostBytes, mostBytes + 1, qint64(0xffffffff)})
            row(qPrintable(QStringLiteral("film %1 at %2 %3").arg(length).arg(at).arg(isBig)),
                film(start, at, isBig ? big(length, 4) : little(length, 4)),
                length == mostBytes + 1 ? Refused : Left);
    }
    const QByteArray iff = "FOR4" + QByteArray(8, 0), end = "FOR4" + QByteArray(4, 0);
    row("IFF block", iff + "AUTH" + big(mostBytes - 20, 4), Left);
    row("IFF longer block", iff + "AUTH" + big(mostBytes - 19, 4), Refused);
    row("IFF odd block", iff + "AUTH" + big(5, 4) + QByteArray(8, 0) + "AUTH" + big(mostBytes, 4),
        Refused);
    row("IFF blocks", iff + QByteArray("AUTH\0\0\0", 8).repeated(mostBlocks - 1) + end, Left);
    row("IFF more blocks", iff + QByteArray("AUTH\0\0\0", 8).repeated(mostBlocks) + end, Refused);
    const QByteArray text = QByteArray("#?RADIANCE").leftJustified((1 << 20) - 2, 'x');
    row("HDR text", text + "\n\n", Left);
    row("HDR longer text", text + "x\n\n", Refused);
    const QByteArray card = QByteArray("SIMPLE  = T").leftJustified(80);
    row("FITS cards", card.repeated(mostBlocks - 1) + QByteArray("END").leftJustified(80), Left);
    row("FITS more cards", card.repeated(mostBlocks) + QByteArray("END").leftJustified(80),
        Refused);
    const auto webp = [](qint64 length, const QByteArray& kind) {
        return "RIFF" + little(length, 4) + "WEBP" + kind + QByteArray(8, 0) + little(39, 3) +
               little(29, 3);
    };
    row("WebP", webp(mostBytes, "VP8X"), Left);
    row("longer WebP", webp(mostBytes + 1, "VP8X"), "40 x 30");
    row("longer WebP of another kind", webp(mostBytes + 1, "VP8L"), Refused);
    const auto pnm = [](const QByteArray& size) { return "P6 # 1\n" + size + " 255\n"; };
    row("PNM", pnm("40 30"), Left, mostBytes);
    row("longer PNM", pnm("40 30"), "40 x 30", mostBytes + 1);
    row("PNM of another kind", "P8 40 30 255\n", Left, mostBytes + 1);
    row("PNM width", pnm("2147483647\t1"), "2147483647 x 1", mostBytes + 1);
    row("PNM larger width", pnm("2147483648 1"), Refused, mostBytes + 1);
    row("PNM vast width", pnm("18446744073709551617 1"), Refused, mostBytes + 1);
    row("PNM without width", pnm("0 30"), Refused, mostBytes + 1);
    row("PNM without height", pnm("40 0"), Refused, mostBytes + 1);
    row("PNM text", pnm("40#" + QByteArray(65522, ' ') + "\n30"), "40 x 30", mostBytes + 1);
    row("PNM longer text", pnm("40#" + QByteArray(65523, ' ') + "\n30"), Refused, mostBytes + 1);
}

void ImageUtilsClaimsTest::answersOnlyVastClaims()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, end);
    FileBytes file([&](std::int64_t position, char* to, std::int64_t count) {
        const std::int64_t given = std::clamp<std::int64_t>(end - position, 0, count);
        std::fill_n(to, given, '\0');
        const std::int64_t written = std::clamp<std::int64_t>(bytes.size() - position, 0, given);
        std::copy_n(bytes.data() + (written > 0 ? position : 0), written, to);
        return given;
    });
    const std::optional<FoundHeader> found = readVastClaims(file);
    QByteArray answer = found ? Refused : Left;
    if (found && !found->refusal)
        answer = QByteArray::number(found->header.width) + " x " +
                 QByteArray::number(found->header.height);
    QTEST(answer, "answer");
}

QTEST_APPLESS_MAIN(ImageUtilsClaimsTest)
#include "tst_imageutils_claims.moc"
