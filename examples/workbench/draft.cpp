// SPDX-License-Identifier: Apache-2.0
#include "draft.h"

#include "sharpen.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

constexpr int screenPixels = 1 << 20;

/// Pixels on either side that a filter reaches, as in bands.cpp.
constexpr int reach = 3;

/// A stretch of source pixels, and how many output pixels it gives before those that are wanted.
struct Stretch
{
    int begin = 0;
    int end = 0;
    int lead = 0;
};

/// The source pixels, of which there are `length`, for the output pixels from `first` to `last`.
Stretch stretchFor(int first, int last, double factor, int length)
{
    constexpr int attempts = 64; // one of them is at most a 64th of a source pixel away
    constexpr double nearEnough = 0.001;
    const int margin = int(std::ceil(reach * std::max(1.0, factor)));
    Stretch best{0, 0, first};
    double least = std::numeric_limits<double>::infinity();
    for (int begin = first - margin; begin > first - margin - attempts && least > nearEnough;
         --begin) {
        const int source = std::max(0, int(std::lround(begin / factor)));
        const double away = begin <= 0 ? 0 : std::abs(source * factor - begin);
        if (away >= least)
            continue;
        least = away;
        best = {source, 0, begin <= 0 ? first : first - begin};
    }
    best.end = std::min(length, int(std::ceil((last + 1 + margin) / factor)) + 1);
    return best;
}

} // namespace

std::vector<Planes> Draft::halvesOf(const Planes& planes)
{
    std::vector<Planes> halves;
    try {
        Planes last = planes;
        while (last.chroma.total() > screenPixels) {
            const QSize size((last.chroma.cols + 1) / 2, (last.chroma.rows + 1) / 2);
            const Result<Planes> half = resampled(last, {0.5, size, {{}, sizeOf(last)}}, {});
            if (!half)
                break;
            last = *half;
            halves.push_back(last);
        }
    } catch (const std::bad_alloc&) {
        halves.clear();
    }
    return halves;
}

const Planes& Draft::copyFor(const Planes& planes, const std::vector<Planes>& halves, double factor)
{
    std::size_t count = 0;
    while (count < halves.size() && std::ldexp(1.0, -int(count) - 1) >= 1.5 * factor)
        ++count;
    return count == 0 ? planes : halves[count - 1];
}

QRect Draft::scaled(const QRect& part, QSize from, QSize to)
{
    const double across = double(to.width()) / from.width();
    const double down = double(to.height()) / from.height();
    const int left = std::min(int(part.left() * across), to.width() - 1);
    const int top = std::min(int(part.top() * down), to.height() - 1);
    const int right = std::min(int(std::ceil((part.right() + 1) * across)), to.width());
    const int bottom = std::min(int(std::ceil((part.bottom() + 1) * down)), to.height());
    return {QPoint(left, top), QPoint(right - 1, bottom - 1)};
}

QRect Draft::sourceOf(const QRect& part, const Fit& fit)
{
    return scaled(part, fit.size, fit.crop.size()).translated(fit.crop.topLeft());
}

Result<Planes> Draft::resampledPart(const Planes& planes, const Fit& fit,
                                    const ExportSettings& settings, const QRect& part)
{
    const int blur = settings.sharpening ? int(std::ceil(4 * settings.sharpening->radius)) : 0;
    const QRect wide = part.adjusted(-blur, -blur, blur, blur) & QRect(QPoint(), fit.size);
    const Stretch across = stretchFor(wide.left(), wide.right(), fit.factor, fit.crop.width());
    const Stretch down = stretchFor(wide.top(), wide.bottom(), fit.factor, fit.crop.height());
    const QRect source(QPoint(across.begin, down.begin), QPoint(across.end - 1, down.end - 1));
    const QSize size(across.lead + wide.width(), down.lead + wide.height());
    const Result<Planes> around = resampled(
        planes, {fit.factor, size, source.translated(fit.crop.topLeft())}, settings.filter);
    if (!around)
        return around;
    const Planes result = cut(*around, QRect(QPoint(across.lead, down.lead), wide.size()));
    if (!settings.sharpening)
        return result;
    return cut(sharpened(result, *settings.sharpening), part.translated(-wide.topLeft()));
}

Result<Planes> Draft::partOfCopy(const Planes& copy, QSize size, const QRect& part, QSize pixels,
                                 const std::optional<FilterShape>& filter)
{
    const QRect source = scaled(part, size, sizeOf(copy));
    const QSize target = pixels.boundedTo(source.size());
    const double factor = std::max(double(target.width()) / source.width(),
                                   double(target.height()) / source.height());
    return resampled(copy, {factor, target, source}, filter);
}
