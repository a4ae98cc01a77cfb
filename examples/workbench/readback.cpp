// SPDX-License-Identifier: Apache-2.0
#include "readback.h"

#include <algorithm>

ReadBack::ReadBack(const OIIO::ImageSpec& stored, std::string_view format, bool isChecked)
    : m_stored(stored), m_readsRows(!isChecked),
      m_comparesRows(!isChecked && (format == "sgi" || format == "rla" || format == "tiff"))
{}

void ReadBack::add(const QImage& rows)
{
    if (!m_comparesRows)
        return;
    constexpr OIIO::stride_t bytesPerPixel = 4 * sizeof(float);
    QByteArray samples(qsizetype(m_stored.scanline_bytes(true)) * rows.height(), '\0');
    OIIO::convert_image(m_stored.nchannels, m_stored.width, rows.height(), 1, rows.constBits(),
                        OIIO::TypeFloat, bytesPerPixel, rows.bytesPerLine(), OIIO::AutoStride,
                        samples.data(), m_stored.format, OIIO::AutoStride, OIIO::AutoStride,
                        OIIO::AutoStride);
    m_digest.addData(samples);
}

bool ReadBack::isWhole(const std::string& path) const
{
    OIIO::ImageSpec asStored; // without it, colours come multiplied by alpha
    asStored.attribute("oiio:UnassociatedAlpha", 1);
    const auto input = OIIO::ImageInput::open(path, &asStored);
    OIIO::geterror(true); // else the next one to ask gets the answer
    if (!input)
        return false;
    const OIIO::ImageSpec& spec = input->spec();
    if (spec.width != m_stored.width || spec.height != m_stored.height || spec.depth > 1)
        return false;
    return !m_readsRows || areRowsWhole(*input);
}

bool ReadBack::areRowsWhole(OIIO::ImageInput& input) const
{
    const OIIO::ImageSpec& spec = input.spec();
    constexpr int rowsAtOnce = 64;
    QByteArray samples(qsizetype(spec.scanline_bytes()) * rowsAtOnce, '\0');
    QCryptographicHash digest(QCryptographicHash::Md5);
    for (int y = 0; y < spec.height; y += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, spec.height - y);
        if (!input.read_scanlines(0, 0, spec.y + y, spec.y + y + count, 0, 0, spec.nchannels,
                                  spec.format, samples.data()))
            return false;
        digest.addData(samples.left(qsizetype(spec.scanline_bytes()) * count));
    }
    return input.geterror().empty() && (!m_comparesRows || digest.result() == m_digest.result());
}
