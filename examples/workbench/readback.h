// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QCryptographicHash>
#include <QtGui/QImage>

#include <OpenImageIO/imageio.h>

#include <string>
#include <string_view>

/// Checks a file that a writer of OpenImageIO has closed by reading it.
class ReadBack
{
public:
    /// `stored` is the header that the writer of `format` made of ours. `isChecked`: its bytes go
    /// through a `CheckedFile`, so the rows need not be read.
    ReadBack(const OIIO::ImageSpec& stored, std::string_view format, bool isChecked);

    /// Takes note of float rows, in order, with four channels in memory, before they are written.
    void add(const QImage& rows);

    /// Whether the file can be opened again, as OpenImageIO writes some of pictures that a format
    /// does not take, and whether it holds the picture. OpenImageIO says nothing of a disk that is
    /// full when it closes a file that it opened itself, so the rows are read. Those of SGI, RLA
    /// and TIFF have to be the noted ones: their writers seek in the file and ignore what does not
    /// arrive, and a file with zeros in its place can be read.
    bool isWhole(const std::string& path) const;

private:
    bool areRowsWhole(OIIO::ImageInput& input) const;

    OIIO::ImageSpec m_stored;
    bool m_readsRows;
    bool m_comparesRows;
    QCryptographicHash m_digest{QCryptographicHash::Md5};
};
