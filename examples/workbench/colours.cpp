// SPDX-License-Identifier: Apache-2.0
#include "colours.h"

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

struct CloseProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

struct FreeCurve
{
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

Profile opened(const QByteArray& icc)
{
    return Profile(cmsOpenProfileFromMem(icc.constData(), cmsUInt32Number(icc.size())));
}

Curve powerCurve(double gamma) { return Curve(cmsBuildGamma(nullptr, gamma)); }

Curve sRgbCurve()
{
    constexpr cmsFloat64Number parameters[] = {2.4, 1.0 / 1.055, 0.055 / 1.055, 1.0 / 12.92,
                                               0.04045};
    return Curve(cmsBuildParametricToneCurve(nullptr, 4, parameters));
}

/// The bytes of `profile`, with a fixed date and without the name of the machine's system.
QByteArray bytesOf(const Profile& profile, const char* name)
{
    cmsSetProfileVersion(profile.get(), 4.3);
    const std::unique_ptr<cmsMLU, void (*)(cmsMLU*)> text(cmsMLUalloc(nullptr, 1), cmsMLUfree);
    cmsMLUsetASCII(text.get(), "en", "US", name);
    cmsWriteTag(profile.get(), cmsSigProfileDescriptionTag, text.get());
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile.get(), nullptr, &size);
    QByteArray bytes(qsizetype(size), '\0');
    cmsSaveProfileToMem(profile.get(), bytes.data(), &size);
    constexpr char date[] = "\x07\xE8\x00\x01\x00\x01\x00\x00\x00\x00\x00"; // 2024-01-01
    std::copy(std::begin(date), std::end(date), bytes.data() + 24);
    std::fill_n(bytes.data() + 40, 4, '\0'); // the platform
    return bytes;
}

QByteArray rgbProfile(const Profiles::Chromaticities& xy, const Curve& curve, const char* name)
{
    const cmsCIExyY white{xy[6], xy[7], 1.0};
    const cmsCIExyYTRIPLE primaries{{xy[0], xy[1], 1.0}, {xy[2], xy[3], 1.0}, {xy[4], xy[5], 1.0}};
    cmsToneCurve* const curves[] = {curve.get(), curve.get(), curve.get()};
    const Profile profile(cmsCreateRGBProfile(&white, &primaries, curves));
    return profile ? bytesOf(profile, name) : QByteArray();
}

cmsUInt32Number lcmsIntent(Intent intent)
{
    return intent == Intent::Perceptual ? INTENT_PERCEPTUAL : INTENT_RELATIVE_COLORIMETRIC;
}

std::shared_ptr<void> newTransform(const QByteArray& from, cmsUInt32Number fromType,
                                   const QByteArray& to, cmsUInt32Number toType, Intent intent)
{
    const Profile source = opened(from);
    const Profile target = opened(to);
    if (!source || !target)
        return {};
    // Its cache of the last pixel would be shared by threads.
    const cmsHTRANSFORM transform = cmsCreateTransform(source.get(), fromType, target.get(), toType,
                                                       lcmsIntent(intent), cmsFLAGS_NOCACHE);
    return transform ? std::shared_ptr<void>(transform, cmsDeleteTransform)
                     : std::shared_ptr<void>();
}

/// Colours from all over the cube, most of them dark, where curves are steep. A grey conversion
/// sees the first channel.
cv::Mat probe()
{
    constexpr int steps = 9;
    cv::Mat colours(1, steps * steps * steps, CV_32FC3);
    for (int at = 0; at < colours.cols; ++at) {
        const cv::Vec3i place(at % steps, at / steps % steps, at / steps / steps);
        const cv::Vec3f even = cv::Vec3f(place) / float(steps - 1);
        colours.at<cv::Vec3f>(at) = even.mul(even);
    }
    return colours;
}

/// The error below which two profiles count as the same: a fourth of a step of 8 bits, because
/// profiles of sRGB by different makers differ by their rounding.
constexpr double sameWithin = 0.25 / 255.0;

} // namespace

Profiles::Space Profiles::spaceOf(const QByteArray& icc)
{
    const Profile profile = opened(icc);
    if (!profile)
        return Space::Other;
    switch (cmsGetColorSpace(profile.get())) {
    case cmsSigGrayData:
        return Space::Grey;
    case cmsSigRgbData:
        return Space::Rgb;
    case cmsSigCmykData:
        return Space::Cmyk;
    default:
        return Space::Other;
    }
}

QString Profiles::nameOf(const QByteArray& icc)
{
    const Profile profile = opened(icc);
    char name[128] = "";
    if (profile)
        cmsGetProfileInfoASCII(profile.get(), cmsInfoDescription, "en", "US", name, sizeof(name));
    return QString::fromLatin1(name);
}

QByteArray Profiles::sRgb() { return rgbProfile(sRgbChromaticities, sRgbCurve(), "sRGB"); }

QByteArray Profiles::greySRgb()
{
    const Curve curve = sRgbCurve();
    const Profile profile(cmsCreateGrayProfile(cmsD50_xyY(), curve.get()));
    return profile ? bytesOf(profile, "sRGB grey") : QByteArray();
}

QByteArray Profiles::adobeRgb()
{
    constexpr Chromaticities primaries{0.64F, 0.33F, 0.21F, 0.71F, 0.15F, 0.06F, 0.3127F, 0.3290F};
    return rgbProfile(primaries, powerCurve(563.0 / 256.0), "Compatible with Adobe RGB (1998)");
}

QByteArray Profiles::power(double gamma, const Chromaticities& chromaticities)
{
    return rgbProfile(chromaticities, powerCurve(gamma), gamma == 1.0 ? "Linear RGB" : "RGB");
}

Result<QByteArray> Profiles::fromFile(const QString& path)
{
    constexpr qint64 largest = 16 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{QStringLiteral("the profile %1: %2").arg(path, file.errorString())};
    const QByteArray icc = file.read(largest);
    if (spaceOf(icc) == Space::Other)
        return Failure{QStringLiteral("%1 is no colour profile").arg(path)};
    return icc;
}

QByteArray Profiles::standardCmyk()
{
    const QString path =
        QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                               QStringLiteral("color/icc/ghostscript/default_cmyk.icc"));
    const Result<QByteArray> icc = fromFile(path);
    return icc && spaceOf(*icc) == Space::Cmyk ? *icc : QByteArray();
}

Result<ColourTransform> ColourTransform::between(const QByteArray& from, const QByteArray& to,
                                                 Intent intent)
{
    ColourTransform result;
    if (from == to)
        return result;
    result.m_isFromGrey = Profiles::spaceOf(from) == Profiles::Space::Grey;
    result.m_transform = newTransform(from, result.m_isFromGrey ? TYPE_GRAY_FLT : TYPE_RGB_FLT, to,
                                      TYPE_RGB_FLT, intent);
    if (!result.m_transform)
        return Failure{QStringLiteral("its colour profile (%1) cannot be converted")
                           .arg(Profiles::nameOf(from))};
    const cv::Mat before = probe();
    cv::Mat after = before.clone();
    result.apply(after);
    cv::Mat expected = before;
    if (result.m_isFromGrey) {
        const int reds[] = {0, 0, 0, 1, 0, 2};
        expected = cv::Mat(before.size(), before.type());
        cv::mixChannels(&before, 1, &expected, 1, reds, 3);
    }
    if (cv::norm(expected, after, cv::NORM_INF) < sameWithin)
        return ColourTransform();
    if (!result.m_isFromGrey)
        result.chooseMatrix(from, to, after);
    return result;
}

/// Takes the short way if it gives what LittleCMS made of the probe, `expected`, within a step of
/// 12 bits.
void ColourTransform::chooseMatrix(const QByteArray& from, const QByteArray& to,
                                   const cv::Mat& expected)
{
    const Profile source = opened(from);
    const Profile target = opened(to);
    const auto matrix = MatrixTransform::between(source.get(), target.get());
    if (!matrix)
        return;
    ColourTransform candidate = *this;
    candidate.m_matrix = std::make_shared<const MatrixTransform>(*matrix);
    cv::Mat after = probe();
    candidate.apply(after);
    if (cv::norm(expected, after, cv::NORM_INF) < 1.0 / 4096)
        *this = candidate;
}

void ColourTransform::applyToRow(cv::Vec3f* row, int count) const
{
    if (!m_matrix) {
        cmsDoTransform(m_transform.get(), row, row, cmsUInt32Number(count));
        return;
    }
    std::vector<int> outside;
    m_matrix->apply(row, count, outside);
    for (const int at : outside)
        cmsDoTransform(m_transform.get(), row + at, row + at, 1);
}

void ColourTransform::apply(cv::Mat& colours) const
{
    if (isIdentity())
        return;
    cv::parallel_for_(cv::Range(0, colours.rows), [&](const cv::Range& rows) {
        std::vector<float> grey(m_isFromGrey ? std::size_t(colours.cols) : 0);
        for (int y = rows.start; y < rows.end; ++y) {
            auto* const row = colours.ptr<cv::Vec3f>(y);
            if (!m_isFromGrey) {
                applyToRow(row, colours.cols);
                continue;
            }
            for (std::size_t x = 0; x < grey.size(); ++x)
                grey[x] = row[x][0];
            cmsDoTransform(m_transform.get(), grey.data(), row, cmsUInt32Number(colours.cols));
        }
    });
}

Planes ColourTransform::converted(const Planes& planes) const
{
    if (isIdentity())
        return planes;
    Planes result = associated(planes, false);
    if (result.chroma.data == planes.chroma.data)
        result.chroma = planes.chroma.clone();
    apply(result.chroma);
    return associated(result, planes.isAssociated);
}

Result<cv::Mat> cmykToSRgb(const cv::Mat& cmyk, const QByteArray& icc, Intent intent)
{
    const bool isByte = cmyk.depth() == CV_8U;
    const auto transform = newTransform(icc, isByte ? TYPE_CMYK_8 : TYPE_CMYK_16, Profiles::sRgb(),
                                        isByte ? TYPE_RGB_8 : TYPE_RGB_16, intent);
    if (!transform)
        return Failure{QStringLiteral("its CMYK profile cannot be converted")};
    cv::Mat rgb(cmyk.size(), CV_MAKETYPE(cmyk.depth(), 3));
    cv::parallel_for_(cv::Range(0, cmyk.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            cmsDoTransform(transform.get(), cmyk.ptr(y), rgb.ptr(y), cmsUInt32Number(cmyk.cols));
    });
    return rgb;
}
