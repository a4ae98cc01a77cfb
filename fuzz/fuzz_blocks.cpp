// SPDX-License-Identifier: Apache-2.0
//
// Any bytes as a picture file whose metadata the workbench carries over: the Exif that it writes is
// what it reads again, and it is no longer than what the file holds allows.
#include "bytesfile.h"
#include "containers.h"
#include "metadata.h"

namespace {

/// The Exif of a whole TIFF structure, written again.
QByteArray rewritten(const QByteArray& block)
{
    const auto exif = parseExif([&](qint64 at, qint64 size) { return block.mid(at, size); });
    return exif ? exifBlock(*exif) : QByteArray();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const MetadataBlocks blocks = readBlocks(fileOfBytes(data, size));
    // A directory of several thousand entries may name the same bytes with each of them.
    if (blocks.profile.size() > qsizetype(size) << 10 || blocks.iptc.size() > qsizetype(size))
        std::abort();
    const PictureFacts facts{{40, 30}, true, QStringLiteral("record")};
    for (const MetadataChoice choice : {MetadataChoice::All, MetadataChoice::NoGps}) {
        const MetadataBlocks exported = exportedBlocks(blocks, choice, facts);
        if (!exported.exif)
            continue;
        const QByteArray block = exifBlock(*exported.exif);
        if (rewritten(block) != block)
            std::abort();
        if (choice == MetadataChoice::NoGps && !exported.exif->gps.empty())
            std::abort();
    }
    return 0;
}
