// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <metadata/metadata_export.h>

#include <QtCore/QString>
#include <QtCore/QVariantMap>

/// The metadata record of one picture file: its format, name, stored size and tags. CMake target
/// `imageutils::metadata`.
///
/// A default-constructed record is empty. This class does not read files; `readMetadata` does.
/// Passing a record through QML copies it, which slices a subclass.
///
/// @ingroup files
/// @par Thread safety
/// A value: several threads may read one record, or have one copy each.
/// @par Ownership
/// A copy is independent of its original.
/// @par Units
/// Pixels for sizes, Exif's units for tags.
/// @par Failure
/// Unknown facts are empty texts, 0 or an invalid variant. Nothing is logged or thrown.
/// @since 1.0
class METADATA_EXPORT NExifToolMetadata
{
public:
    /// An empty record.
    NExifToolMetadata() = default;
    /// Takes the facts as they are: `fileType` a lower-case extension without '.', the size as
    /// stored in pixels.
    NExifToolMetadata(const QString& fileType, const QString& imageName, int imageWidth,
                      int imageHeight, const QVariantMap& values);
    /// A copy.
    NExifToolMetadata(const NExifToolMetadata&) = default;
    /// Takes over the contents of another record.
    NExifToolMetadata(NExifToolMetadata&&) = default;
    /// Becomes a copy of another record.
    NExifToolMetadata& operator=(const NExifToolMetadata&) = default;
    /// Takes over the contents of another record.
    NExifToolMetadata& operator=(NExifToolMetadata&&) = default;
    /// Virtual, because an application may derive its own record.
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
    /// "thumbnail" describes the embedded preview in a few words and is absent when there is none.
    virtual QVariant value(const QString& key) const;

private:
    QString m_fileType;
    QString m_imageName;
    int m_imageWidth = 0;
    int m_imageHeight = 0;
    QVariantMap m_values;
};
