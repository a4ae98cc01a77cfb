// SPDX-License-Identifier: Apache-2.0
//
// Matrices as bytes, base64 text and lists.
#include <imageutils/cvutils.h>

#include <imageutils/cvutils_p.h>
#include <imageutils/kernels/base64.h>
#include <imageutils/library_p.h>
#include <platform/prefault.h>

#include <QtCore/QDebug>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace {

// Elements are copied without swapping bytes.
static_assert(std::endian::native == std::endian::little);

/// Offsets of the header's fields and of the elements after it.
enum : std::size_t { typeAt = 0, rowsAt = 4, colsAt = 8, channelsAt = 12, dataAt = 16 };

/// The bits of an element type: 3 of depth, 9 of channels.
constexpr qint32 typeBits = 0xFFF;

// Base64 is written into a block that fits into the L1 cache, and appended from there: a result
// that is resized beforehand would be filled with zeros first.
constexpr std::size_t blockBytes = 3 * 1024;
constexpr std::size_t blockCharacters = 4 * 1024;

/// Reserves memory for `size` bytes or characters that are about to be appended, and prefaults it.
template<typename Container>
void reservePrefaulted(Container& container, std::size_t size)
{
    container.reserve(size);
    CvUtils::prefaultBlock(container.data(), size);
}

} // namespace

std::vector<unsigned char> CvUtils::serializeMat(const cv::Mat& mat)
{
    std::vector<unsigned char> bytes;
    if (mat.dims > 2) {
        qWarning() << "serializeMat: matrix must have two dimensions, got:" << mat.dims;
        return bytes;
    }
    const std::size_t rowBytes = std::size_t(mat.cols) * mat.elemSize();
    reservePrefaulted(bytes, dataAt + std::size_t(mat.rows) * rowBytes);
    bytes.resize(dataAt);
    qToLittleEndian(qint32(mat.type()), &bytes[typeAt]);
    qToLittleEndian(qint32(mat.rows), &bytes[rowsAt]);
    qToLittleEndian(qint32(mat.cols), &bytes[colsAt]);
    qToLittleEndian(qint32(mat.channels()), &bytes[channelsAt]);
    if (mat.empty())
        return bytes;
    if (mat.isContinuous()) {
        bytes.insert(bytes.end(), mat.data, mat.data + std::size_t(mat.rows) * rowBytes);
        return bytes;
    }
    for (int y = 0; y < mat.rows; ++y)
        bytes.insert(bytes.end(), mat.ptr(y), mat.ptr(y) + rowBytes);
    return bytes;
}

cv::Mat CvUtils::deserializeMat(const std::vector<unsigned char>& bytes)
{
    if (bytes.size() < dataAt) {
        qWarning() << "deserializeMat: header needs 16 bytes, got:" << bytes.size();
        return {};
    }
    const auto type = qFromLittleEndian<qint32>(&bytes[typeAt]);
    const auto rows = qFromLittleEndian<qint32>(&bytes[rowsAt]);
    const auto cols = qFromLittleEndian<qint32>(&bytes[colsAt]);
    if (type < 0 || type > typeBits) {
        qWarning() << "deserializeMat: invalid element type:" << type;
        return {};
    }
    if (rows < 0 || cols < 0) {
        qWarning() << "deserializeMat: negative size:" << rows << "x" << cols;
        return {};
    }
    // A division, because rows x cols x element size may exceed 64 bits.
    const std::size_t elements = std::size_t(rows) * std::size_t(cols);
    const std::size_t elementSize = CV_ELEM_SIZE(type);
    if (elements > (bytes.size() - dataAt) / elementSize) {
        qWarning() << "deserializeMat: too few bytes for" << rows << "x" << cols << "of type"
                   << type << "- got:" << bytes.size();
        return {};
    }
    cv::Mat mat(rows, cols, type);
    prefaultWhole(mat);
    if (elements > 0)
        std::memcpy(mat.data, &bytes[dataAt], elements * elementSize);
    return mat;
}

std::string CvUtils::base64Encode(const std::vector<unsigned char>& bytes)
{
    std::string text;
    reservePrefaulted(text, (bytes.size() + 2) / 3 * 4);
    std::array<char, blockCharacters> block;
    for (std::size_t done = 0; done < bytes.size(); done += blockBytes) {
        const std::size_t count = std::min(blockBytes, bytes.size() - done);
        text.append(block.data(), Kernels::encodeBase64(bytes.data() + done, count,
                                                        s_base64Alphabet.data(), block.data()));
    }
    return text;
}

std::vector<unsigned char> CvUtils::base64Decode(const std::string& text)
{
    std::vector<unsigned char> bytes;
    reservePrefaulted(bytes, (text.size() + 3) / 4 * 3);
    std::array<unsigned char, blockBytes> block;
    std::size_t decoded = blockBytes; // fewer if a character ended the decoding
    for (std::size_t done = 0; done < text.size() && decoded == blockBytes;
         done += blockCharacters) {
        const std::size_t count = std::min(blockCharacters, text.size() - done);
        decoded = Kernels::decodeBase64(text.data() + done, count, block.data());
        bytes.insert(bytes.end(), block.data(), block.data() + decoded);
    }
    return bytes;
}

QList<QVariant> CvUtils::matToList(const cv::Mat& mat)
{
    QList<QVariant> list;
    if (mat.type() != CV_32FC1) {
        qWarning() << "[CVUtils] Attempted mat conversion to QVariantList on non-vector Mat";
        return list;
    }
    list.reserve(std::max(mat.rows, 0)); // rows is -1 for more than two dimensions
    for (int y = 0; y < mat.rows; ++y) {
        QVariantList row;
        row.reserve(mat.cols);
        for (int x = 0; x < mat.cols; ++x)
            row.append(QVariant(mat.at<float>(y, x)));
        list.append(QVariant(row));
    }
    return list;
}
