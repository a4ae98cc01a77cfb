// SPDX-License-Identifier: Apache-2.0
#include <metadata/nexiftoolmetadata.h>

NExifToolMetadata::NExifToolMetadata(const QString& fileType, const QString& imageName,
                                     int imageWidth, int imageHeight, const QVariantMap& values)
    : m_fileType(fileType), m_imageName(imageName), m_imageWidth(imageWidth),
      m_imageHeight(imageHeight), m_values(values)
{}

NExifToolMetadata::~NExifToolMetadata() = default;

QString NExifToolMetadata::fileType() const { return m_fileType; }

QString NExifToolMetadata::imageName() const { return m_imageName; }

int NExifToolMetadata::imageWidth() const { return m_imageWidth; }

int NExifToolMetadata::imageHeight() const { return m_imageHeight; }

QVariant NExifToolMetadata::value(const QString& key) const { return m_values.value(key); }
