// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <metadata/metadata_export.h>

#include <QtCore/QString>
#include <QtCore/QVariantMap>

/// What is known of one picture file: its format, name, stored size and tags.
///
/// A copyable value; a copy is independent of its original. A default-constructed record knows
/// nothing. Reading the facts from a file is not this class's business. Passing a record through
/// QML copies it, which slices a subclass.
class METADATA_EXPORT NExifToolMetadata
{
public:
    NExifToolMetadata() = default;
    /// Takes the facts as they are: `fileType` a lower-case extension without '.', the size as
    /// stored in pixels.
    NExifToolMetadata(const QString& fileType, const QString& imageName, int imageWidth,
                      int imageHeight, const QVariantMap& values);
    NExifToolMetadata(const NExifToolMetadata&) = default;
    NExifToolMetadata(NExifToolMetadata&&) = default;
    NExifToolMetadata& operator=(const NExifToolMetadata&) = default;
    NExifToolMetadata& operator=(NExifToolMetadata&&) = default;
    virtual ~NExifToolMetadata();

    /// The format as a lower-case extension without '.', e.g. "jpg"; empty when unknown.
    virtual QString fileType() const;

    /// The file's name, for people and log lines.
    virtual QString imageName() const;

    /// The width in pixels as stored, before any turn by the orientation; 0 when unknown.
    virtual int imageWidth() const;

    /// The height in pixels as stored, before any turn by the orientation; 0 when unknown.
    virtual int imageHeight() const;

    /// The value under the tag name `key`, e.g. "Model"; an invalid variant when there is none.
    /// Numbers are numbers (times in seconds, coordinates in signed degrees), texts are texts.
    /// "thumbnail" describes the embedded preview in a few words and is absent where there is none.
    virtual QVariant value(const QString& key) const;

private:
    QString m_fileType;
    QString m_imageName;
    int m_imageWidth = 0;
    int m_imageHeight = 0;
    QVariantMap m_values;
};
