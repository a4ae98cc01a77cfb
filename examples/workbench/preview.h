// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "colours.h"
#include "jobmessage.h"
#include "photograph.h"
#include "pixelbuffer.h"
#include "planes.h"

#include <QtCore/QDateTime>
#include <QtGui/QImage>

#include <list>
#include <memory>
#include <optional>

/// What a window shows of photographs. Decoded photographs are kept within a limit of memory, so
/// that another part of one, or the same part with other settings, needs no decoding.
class Preview
{
public:
    /// Keeps decoded photographs of `bytes`.
    explicit Preview(qint64 bytes) : m_bytes(bytes) {}

    /// What `request` wants to see: the message that goes before the pixels. A photograph that
    /// cannot be shown gives an empty picture, and the facts say why.
    Message of(const Request& request);

    /// The pixels of the message before: RGBA in sRGB, rows that are not padded.
    QByteArray pixels() const;

private:
    /// A picture on its way to the window, and the settings that made it.
    struct Picture
    {
        QString settings;
        Planes planes;
    };
    /// The exported picture, read back from its file.
    struct Encoded
    {
        QString settings;
        Planes planes;
        ColourTransform toDisplay;
        std::unique_ptr<PixelBuffer> buffer = std::make_unique<PixelBuffer>();
    };
    struct Decoded
    {
        QString path;
        QString version; ///< of the file and of the settings of decoding
        std::unique_ptr<PixelBuffer> buffer;
        Planes planes;
        ColourTransform toDisplay;
        JobResult facts;
        Photograph file; ///< without its samples
        Picture before{};
        Picture after{};
        Encoded encoded{};
    };

    void show(const Request& request, Message& message);
    bool showThumbnail(const Request& request, Message& message);
    Decoded* decoded(const Request& request, JobResult& facts);
    std::optional<Decoded> decode(const Request& request, JobResult& facts) const;
    QString update(Decoded& photograph, const Request& request) const;
    QString updateBefore(Decoded& photograph, const ExportSettings& settings) const;
    QString updateAfter(Decoded& photograph, const ExportSettings& settings) const;
    QString updateEncoded(Decoded& photograph, const Request& request) const;
    void showPart(const Planes& planes, const ColourTransform& toDisplay, const View& view,
                  Message& message);
    static qint64 bytesOf(const Decoded& photograph);
    void dropOldest();

    const qint64 m_bytes;
    std::list<Decoded> m_decoded; ///< the last one that was shown comes first
    QImage m_image;
};
