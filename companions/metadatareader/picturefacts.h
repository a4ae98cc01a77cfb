// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <optional>

/// What a provider finds in a picture file.
struct PictureFacts
{
    QStringList extensions; ///< of the format that the contents are of, the usual one first
    int width = 0;          ///< in pixels, as the format's header says
    int height = 0;
    QVariantMap values; ///< by the keys of `readMetadata`
};

/// What the file at `path` holds; without a value, `error` says why. May throw.
std::optional<PictureFacts> readPictureFacts(const QString& path, QString& error);
