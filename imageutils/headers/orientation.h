// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

/// Whether a file's metadata turns its picture by a quarter, as OpenImageIO takes it. Where blocks
/// contradict each other, or one is not made as it should be, which of them counts differs from
/// version to version: then OpenImageIO has to be asked.
class QuarterTurn
{
public:
    /// Adds an Exif block, which is a small TIFF file.
    void addExif(std::string_view tiff);

    /// Adds an XMP packet.
    void addXmp(std::string_view packet);

    /// Whether `isTurned` is what OpenImageIO says.
    bool isCertain() const;

    /// What the Exif blocks say; false where none says anything.
    bool isTurned() const { return m_exif == Claim::Turned; }

private:
    enum class Claim { None, Upright, Turned, Unclear };
    static Claim claimOf(unsigned orientation);
    static Claim merged(Claim a, Claim b);
    static Claim claimOfDirectory(std::string_view tiff, unsigned offset, std::size_t& entriesLeft);

    Claim m_exif = Claim::None;
    Claim m_xmp = Claim::None;
};
