// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <optional>

/// The facts that a provider finds in a picture file.
struct PictureFacts
{
    QStringList extensions; ///< of the format of the contents, the usual one first
    int width = 0;          ///< in pixels, as the format's header says
    int height = 0;
    QVariantMap values; ///< by the keys of `readMetadata`
};

/// The facts of the file at `path`; without a value, `error` gives the reason. May throw.
std::optional<PictureFacts> readPictureFacts(const QString& path, QString& error);
