// SPDX-License-Identifier: Apache-2.0
#include "reference.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// The weights of the samples from `first` on.
struct Taps
{
    int first;
    std::vector<double> weights;

    int last() const { return first + int(weights.size()) - 1; }
};

double cubic(double x, double b, double c)
{
    const double t = std::abs(x);
    if (t < 1)
        return ((12 - 9 * b - 6 * c) * t * t * t + (-18 + 12 * b + 6 * c) * t * t + 6 - 2 * b) / 6;
    if (t < 2)
        return ((-b - 6 * c) * t * t * t + (6 * b + 30 * c) * t * t + (-12 * b - 48 * c) * t +
                8 * b + 24 * c) /
               6;
    return 0;
}

double originOf(Reference::Origin origin, double scale)
{
    switch (origin) {
    case Reference::Origin::OnSample:
        return 0;
    case Reference::Origin::Areas:
        return 0.5 / scale - 0.5;
    case Reference::Origin::HalfBefore:
        break;
    }
    return -0.5;
}

Taps tapsOf(int place, double scale, const Reference::Filter& filter)
{
    const double centre = place / scale + originOf(filter.origin, scale);
    const double stretch = filter.widens ? std::min(1.0, scale) : 1.0;
    const int last = int(std::floor(centre + 2 / stretch));
    Taps taps{int(std::ceil(centre - 2 / stretch)), {}};
    double sum = 0;
    for (int i = taps.first; i <= last; ++i) {
        taps.weights.push_back(cubic((i - centre) * stretch, filter.b, filter.c));
        sum += taps.weights.back();
    }
    for (double& weight : taps.weights)
        weight /= sum;
    return taps;
}

double sampleOf(const cv::Mat& source, const Taps& x, const Taps& y, int channel)
{
    double sum = 0;
    for (std::size_t j = 0; j < y.weights.size(); ++j) {
        for (std::size_t i = 0; i < x.weights.size(); ++i)
            sum += y.weights[j] * x.weights[i] *
                   double(source.at<cv::Vec3f>(y.first + int(j), x.first + int(i))[channel]);
    }
    return sum;
}

} // namespace

double Reference::differenceOf(const cv::Mat& result, const cv::Mat& source, double scale,
                               const Filter& filter)
{
    constexpr int places = 24; // along each side
    // With the other origins the whole source is mapped onto the whole result.
    const bool stretches = filter.origin != Origin::OnSample;
    const double scaleX = stretches ? double(result.cols) / source.cols : scale;
    const double scaleY = stretches ? double(result.rows) / source.rows : scale;
    double largest = 0;
    for (int n = 0; n < places * places; ++n) {
        const int column = n % places * (result.cols - 1) / places;
        const int row = n / places * (result.rows - 1) / places;
        const Taps x = tapsOf(column, scaleX, filter);
        const Taps y = tapsOf(row, scaleY, filter);
        if (x.first < 0 || y.first < 0 || x.last() >= source.cols || y.last() >= source.rows)
            continue; // implementations differ at the edges
        const int channel = n % 3;
        largest = std::max(largest, std::abs(sampleOf(source, x, y, channel) -
                                             double(result.at<cv::Vec3f>(row, column)[channel])));
    }
    return largest;
}
