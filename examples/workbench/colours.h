// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "matrixtransform.h"
#include "options.h"
#include "planes.h"
#include "result.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <opencv2/core.hpp>

#include <array>
#include <memory>

/// Colour profiles as the bytes of ICC profiles. Those made here hold no date and no name of a
/// machine, so that two runs write the same bytes.
namespace Profiles {

enum class Space { Grey, Rgb, Cmyk, Other };

/// The x and y of red, green, blue and white, in the order of OpenEXR's attribute `chromaticities`.
using Chromaticities = std::array<float, 8>;
inline constexpr Chromaticities sRgbChromaticities{0.64F, 0.33F, 0.30F,   0.60F,
                                                   0.15F, 0.06F, 0.3127F, 0.3290F};

/// The colours in which `icc` describes samples; `Other` for bytes that are no profile.
Space spaceOf(const QByteArray& icc);

/// The name by which the profile describes itself.
QString nameOf(const QByteArray& icc);

QByteArray sRgb();
QByteArray greySRgb(); ///< the curve of sRGB for pictures of one channel
QByteArray adobeRgb();

/// Samples that are powers of light: `gamma` 1 is linear light.
QByteArray power(double gamma, const Chromaticities& chromaticities = sRgbChromaticities);

/// The profile at `path`.
Result<QByteArray> fromFile(const QString& path);

/// The profile for CMYK pictures that have none: `default_cmyk.icc` of Debian's package
/// `libgs-common`, from the first folder of shared data that holds it; empty when it is not
/// installed.
QByteArray standardCmyk();

} // namespace Profiles

/// A conversion between two profiles. Copies share the tables; converting may be done on several
/// threads at once.
class ColourTransform
{
public:
    /// Changes nothing.
    ColourTransform() = default;

    /// From grey or RGB samples with the profile `from` to RGB samples with the profile `to`.
    /// Changes nothing when the two describe the same colours.
    static Result<ColourTransform> between(const QByteArray& from, const QByteArray& to,
                                           Intent intent);

    bool isIdentity() const { return !m_transform; }

    /// Converts the `CV_32FC3` colours, which are not multiplied by alpha.
    void apply(cv::Mat& colours) const;

    /// `planes` with converted colours: new matrices, or the input's where nothing changes.
    Planes converted(const Planes& planes) const;

private:
    void applyToRow(cv::Vec3f* row, int count) const;
    void chooseMatrix(const QByteArray& from, const QByteArray& to, const cv::Mat& expected);

    std::shared_ptr<void> m_transform;
    std::shared_ptr<const MatrixTransform>
        m_matrix; ///< the same, where the profiles have that form
    bool m_isFromGrey = false;
};

/// The ink samples `cmyk` (`CV_8UC4` or `CV_16UC4`, 0 is no ink) as sRGB of the same depth, through
/// the profile `icc`.
Result<cv::Mat> cmykToSRgb(const cv::Mat& cmyk, const QByteArray& icc, Intent intent);
