// SPDX-License-Identifier: Apache-2.0
#include "matrixtransform.h"

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr int decodeSteps = 4096;
constexpr int encodeSteps = 4096;
constexpr std::array<cmsTagSignature, 3> curveTags{cmsSigRedTRCTag, cmsSigGreenTRCTag,
                                                   cmsSigBlueTRCTag};
constexpr std::array<cmsTagSignature, 3> primaryTags{cmsSigRedColorantTag, cmsSigGreenColorantTag,
                                                     cmsSigBlueColorantTag};

/// The colours that the samples 1 of the three channels stand for; a matrix of 0 where the profile
/// does not say it.
cv::Matx33d primariesOf(cmsHPROFILE profile)
{
    cv::Matx33d matrix = cv::Matx33d::zeros();
    for (int channel = 0; channel < 3; ++channel) {
        const void* const tag = cmsReadTag(profile, primaryTags.at(std::size_t(channel)));
        if (!tag)
            return cv::Matx33d::zeros();
        const auto* const colour = static_cast<const cmsCIEXYZ*>(tag);
        matrix(0, channel) = colour->X;
        matrix(1, channel) = colour->Y;
        matrix(2, channel) = colour->Z;
    }
    return matrix;
}

const cmsToneCurve* curveOf(cmsHPROFILE profile, std::size_t channel)
{
    return static_cast<const cmsToneCurve*>(cmsReadTag(profile, curveTags.at(channel)));
}

std::vector<float> decodeTable(const cmsToneCurve* curve)
{
    std::vector<float> table;
    for (int step = 0; step <= decodeSteps; ++step)
        table.push_back(cmsEvalToneCurveFloat(curve, float(step) / decodeSteps));
    return table;
}

/// Curves of light are steep near black. Steps of the fourth root are narrow there.
std::vector<float> encodeTable(const cmsToneCurve* curve)
{
    const std::unique_ptr<cmsToneCurve, void (*)(cmsToneCurve*)> inverse(cmsReverseToneCurve(curve),
                                                                         cmsFreeToneCurve);
    std::vector<float> table;
    for (int step = 0; inverse && step <= encodeSteps; ++step)
        table.push_back(
            cmsEvalToneCurveFloat(inverse.get(), float(std::pow(double(step) / encodeSteps, 4))));
    return table;
}

/// The value of `table` at `place` between 0 and 1.
float valueAt(const std::vector<float>& table, float place)
{
    const float scaled = place * float(table.size() - 1);
    const std::size_t below = std::min(std::size_t(scaled), table.size() - 2);
    const float part = scaled - float(below);
    return table[below] + part * (table[below + 1] - table[below]);
}

bool isInside(const cv::Vec3f& pixel)
{
    return pixel[0] >= 0.0F && pixel[0] <= 1.0F && pixel[1] >= 0.0F && pixel[1] <= 1.0F &&
           pixel[2] >= 0.0F && pixel[2] <= 1.0F;
}

} // namespace

std::optional<MatrixTransform> MatrixTransform::between(void* source, void* target)
{
    if (!cmsIsMatrixShaper(source) || !cmsIsMatrixShaper(target) ||
        cmsIsTag(source, cmsSigAToB0Tag) || cmsIsTag(target, cmsSigBToA0Tag))
        return {};
    const cv::Matx33d from = primariesOf(source);
    const cv::Matx33d to = primariesOf(target);
    if (cv::determinant(from) == 0.0 || cv::determinant(to) == 0.0)
        return {};
    MatrixTransform result;
    result.m_matrix = cv::Matx33f(to.inv() * from);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const cmsToneCurve* const decode = curveOf(source, channel);
        const cmsToneCurve* const encode = curveOf(target, channel);
        if (!decode || !encode)
            return {};
        result.m_decode.at(channel) = decodeTable(decode);
        result.m_encode.at(channel) = encodeTable(encode);
        if (result.m_encode.at(channel).empty())
            return {};
    }
    return result;
}

void MatrixTransform::apply(cv::Vec3f* pixels, int count, std::vector<int>& outside) const
{
    for (int at = 0; at < count; ++at) {
        cv::Vec3f& pixel = pixels[at];
        if (!isInside(pixel)) {
            outside.push_back(at);
            continue;
        }
        const cv::Vec3f light(valueAt(m_decode[0], pixel[0]), valueAt(m_decode[1], pixel[1]),
                              valueAt(m_decode[2], pixel[2]));
        const cv::Vec3f result = m_matrix * light;
        if (!isInside(result)) {
            outside.push_back(at);
            continue;
        }
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] =
                valueAt(m_encode.at(std::size_t(channel)), std::sqrt(std::sqrt(result[channel])));
    }
}
