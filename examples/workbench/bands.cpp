// SPDX-License-Identifier: Apache-2.0
#include "bands.h"

#include <imageutils/cvutils.h>
#include <timing/elapsedtime.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Output rows on either side of a band that its filter reaches, whose radius is two source or two
/// output pixels, whichever is larger.
constexpr int reach = 3;

/// Source pixels of a band: enough that the rows which are made twice cost little, and few enough
/// that a band takes some 10 MB as floats.
constexpr double pixelsAtOnce = 3 << 18;
constexpr int leastRows = 8;

/// Whether the output row `row` lies on a source row.
bool isOnSourceRow(int row, double factor)
{
    constexpr double tolerance = 0.001;
    const double place = row / factor;
    return std::abs(place - std::round(place)) <= tolerance;
}

/// Where the band that follows `wanted` or more output rows may begin.
int nextBegin(int wanted, const Fit& fit)
{
    int begin = wanted;
    while (begin < fit.size.height() && !isOnSourceRow(begin - reach, fit.factor))
        ++begin;
    return std::min(begin, fit.size.height());
}

std::vector<cv::Range> sourcesOf(const std::vector<Band>& bands)
{
    std::vector<cv::Range> sources;
    sources.reserve(bands.size());
    for (const Band& band : bands)
        sources.push_back(band.source);
    return sources;
}

/// The `band` of `photograph`, whose source rows are `samples`, resampled to `fit`. `buffer` holds
/// these rows in floats.
Result<Planes> resampledBand(const Photograph& photograph, const cv::Mat& samples, const Band& band,
                             const Fit& fit, const std::optional<FilterShape>& filter,
                             PixelBuffer& buffer)
{
    const Result<Planes> source = splitSamples(photograph, samples, buffer);
    if (!source)
        return source.failure();
    const Fit bandFit{fit.factor, QSize(fit.size.width(), band.surplus + band.rows),
                      QRect(QPoint(), sizeOf(*source))};
    Result<Planes> result = resampled(*source, bandFit, filter);
    if (!result)
        return result;
    const cv::Range kept(band.surplus, band.surplus + band.rows);
    result->chroma = result->chroma.rowRange(kept);
    if (!result->alpha.empty())
        result->alpha = result->alpha.rowRange(kept);
    return result;
}

} // namespace

std::vector<Band> bandsOf(QSize source, const Fit& fit)
{
    if (fit.factor > 1.0) // enlarging takes several steps, each of which rounds the size
        return {{cv::Range(0, source.height()), 0, fit.size.height()}};
    const double rows = pixelsAtOnce / source.width() * fit.factor;
    const int rowsAtOnce = std::max(leastRows, int(std::min(rows, double(fit.size.height()))));
    std::vector<Band> bands;
    for (int begin = 0; begin < fit.size.height();) {
        const int end = nextBegin(begin + rowsAtOnce, fit);
        const int surplus = std::min(begin, reach);
        const int first = int(std::lround((begin - surplus) / fit.factor));
        const bool isLast = end == fit.size.height();
        const int last = isLast ? source.height() : int(std::ceil((end + reach) / fit.factor)) + 1;
        bands.push_back({cv::Range(first, std::min(last, source.height())), surplus, end - begin});
        begin = end;
    }
    return bands;
}

Result<Planes> resampledInBands(const Photograph& photograph, const Fit& fit,
                                const std::optional<FilterShape>& filter, PixelBuffer& buffer)
{
    const cv::Size size(fit.size.width(), fit.size.height());
    Planes whole{cv::Mat(size, CV_32FC3), {}, photograph.isAssociated};
    if (photograph.isTransparent)
        whole.alpha.create(size, CV_32FC1);
    int row = 0;
    for (const Band& band : bandsOf(sizeOf(photograph), fit)) {
        const Result<Planes> planes = resampledBand(
            photograph, photograph.samples.rowRange(band.source), band, fit, filter, buffer);
        if (!planes)
            return planes;
        const cv::Range rows(row, row + band.rows);
        planes->chroma.copyTo(whole.chroma.rowRange(rows));
        if (!whole.alpha.empty())
            planes->alpha.copyTo(whole.alpha.rowRange(rows));
        row = rows.end;
    }
    return whole;
}

Result<QImage> joined(const Planes& planes, const ColourPlan& plan, const Layout& layout)
{
    const Planes converted = plan.transform.converted(planes);
    Planes laidOut =
        layout.hasAlpha ? associated(converted, layout.isAssociated) : overWhite(converted);
    QImage image = CvUtils::matToQImage(laidOut.chroma, laidOut.alpha);
    if (image.isNull())
        return Failure{QStringLiteral("the library refused the planes")};
    return image;
}

BandedOutput::BandedOutput(const Photograph& photograph, Recipe recipe, PixelBuffer& buffer,
                           std::function<void(Step)> onStep)
    : m_photograph(photograph), m_recipe(std::move(recipe)), m_buffer(buffer),
      m_onStep(std::move(onStep)), m_bands(bandsOf(sizeOf(photograph), m_recipe.fit)),
      m_samples(photograph, sourcesOf(m_bands)), m_examination(photograph)
{}

/// Does a piece of `step` and adds its time.
void BandedOutput::measure(Step step, const std::function<void()>& work)
{
    const qint64 begin = ElapsedTime::monotonicNanoseconds();
    work();
    const qint64 end = ElapsedTime::monotonicNanoseconds();
    m_milliseconds.at(std::size_t(step)) += double(end - begin) / 1e6;
}

Result<QImage> BandedOutput::next()
{
    Result<SampleRows::Part> part = Failure{};
    m_onStep(Step::Decode); // the encoder is not at fault if this ends the process
    measure(Step::Decode, [&] { part = m_samples.next(); });
    m_onStep(Step::Write);
    m_isUndecodable = !part;
    if (!part)
        return part.failure();
    if (m_photograph.samples.empty()) // else all of them were examined at once
        measure(Step::Analyse, [&] {
            const cv::Range fresh(part->firstNew, part->samples.rows);
            m_examination.add(coloursOf(m_photograph, part->samples.rowRange(fresh)));
        });
    Result<Planes> planes = Failure{};
    measure(Step::Resample, [&] {
        planes = resampledBand(m_photograph, part->samples, m_bands.at(m_next++), m_recipe.fit,
                               m_recipe.filter, m_buffer);
    });
    if (!planes)
        return planes.failure();
    Result<QImage> image = Failure{};
    measure(Step::Join, [&] { image = joined(*planes, m_recipe.colours, m_recipe.layout); });
    return image;
}
