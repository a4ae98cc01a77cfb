// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "colours.h"
#include "jobmessage.h"
#include "photograph.h"
#include "pixelbuffer.h"
#include "planes.h"
#include "resample.h"

#include <QtCore/QDateTime>
#include <QtGui/QImage>

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <vector>

/// What a window shows of photographs. Decoded photographs are kept within a limit of memory, so
/// that another part of one, or the same part with other settings, needs no decoding.
class Preview
{
public:
    /// Keeps decoded photographs of `bytes`.
    explicit Preview(qint64 bytes) : m_bytes(bytes) {}

    /// What `request` wants to see: the message that goes before the pixels. A photograph that
    /// cannot be shown gives an empty picture, and the facts say why. Long work asks `interrupt`
    /// again and again whether it is to be given up.
    Message of(const Request& request, const std::function<Interrupt()>& interrupt);

    /// The pixels of the message before: RGBA in sRGB, rows that are not padded.
    QByteArray pixels() const;

private:
    /// A picture on its way to the window, and the settings that made it.
    struct Picture
    {
        QString settings;
        Planes planes;
        std::vector<Planes> halves{}; ///< smaller copies, as Draft::halvesOf makes them
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
        std::vector<Planes> halves;
        ColourTransform toDisplay;
        JobResult facts;
        Photograph file; ///< without its samples
        std::unique_ptr<PixelBuffer> afterBuffer = std::make_unique<PixelBuffer>();
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
    bool showDraft(const Decoded& photograph, const Request& request, Message& message);
    void showPart(const Planes& planes, const std::vector<Planes>& halves,
                  const ColourTransform& toDisplay, const View& view, Message& message);
    void showPlanes(const Planes& planes, const ColourTransform& toDisplay);
    Result<Planes> draftOf(const Decoded& photograph, const Request& request, const Fit& fit,
                           const QRect& part) const;
    static Result<Planes> reducedBefore(const Decoded& photograph, const ExportSettings& settings,
                                        double factor);
    static qint64 bytesOf(const Decoded& photograph);
    void dropOldest();

    void giveUpFor(Interrupt least) const;
    Result<Planes> splitInRows(const Photograph& photograph, PixelBuffer& buffer) const;
    Result<Planes> resampledInSteps(Decoded& photograph, const Fit& fit,
                                    const std::optional<FilterShape>& filter) const;

    const qint64 m_bytes;
    std::function<Interrupt()> m_interrupt;
    std::list<Decoded> m_decoded; ///< the last one that was shown comes first
    QImage m_image;
};
