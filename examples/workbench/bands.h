// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exporter.h"
#include "jobresult.h"
#include "photograph.h"
#include "resample.h"
#include "samplerows.h"

#include <vector>

/// Rows of an output, and the rows of the source from which the library resamples them.
struct Band
{
    cv::Range source;
    int surplus; ///< rows that the library makes above `rows`, whose neighbours are not in `source`
    int rows;
};

/// Divides the output of a picture of the size `source` into bands from top to bottom. The library
/// places output sample 0 on input sample 0, so a band begins where an output row lies on a source
/// row, within a thousandth of a pixel; where a factor has no such row, there is one band for all
/// rows, or few.
std::vector<Band> bandsOf(QSize source, const Fit& fit);

/// The whole of `photograph` resampled, band by band, so that only a few of its rows are in memory
/// as floats.
Result<Planes> resampledInBands(const Photograph& photograph, const Fit& fit,
                                const std::optional<FilterShape>& filter, PixelBuffer& buffer);

/// `planes` with the colours of `plan`, laid out as `layout` says, as an image for `exportPicture`.
Result<QImage> joined(const Planes& planes, const ColourPlan& plan, const Layout& layout);

/// The output of one photograph, made band by band while it is written.
class BandedOutput
{
public:
    /// How the output is made of the photograph.
    struct Recipe
    {
        Fit fit;
        std::optional<FilterShape> filter;
        Layout layout;
        ColourPlan colours;
    };

    /// `onStep` is called as steps begin.
    BandedOutput(const Photograph& photograph, Recipe recipe, PixelBuffer& buffer,
                 std::function<void(Step)> onStep);

    /// The next rows for `exportPicture`.
    Result<QImage> next();

    /// Whether the last call of `next` failed because rows of the source could not be decoded.
    bool isUndecodable() const { return m_isUndecodable; }

    /// What the rows so far say about a photograph that is decoded row by row.
    const Examination& examination() const { return m_examination; }

    /// The time of `step` so far: `Decode`, `Analyse`, `Resample` (with the splitting of the rows)
    /// or `Join`.
    double milliseconds(Step step) const { return m_milliseconds.at(std::size_t(step)); }

private:
    void measure(Step step, const std::function<void()>& work);

    const Photograph& m_photograph;
    const Recipe m_recipe;
    PixelBuffer& m_buffer;
    const std::function<void(Step)> m_onStep;
    const std::vector<Band> m_bands;
    SampleRows m_samples;
    Examination m_examination;
    std::size_t m_next = 0;
    bool m_isUndecodable = false;
    std::array<double, stepNames.size()> m_milliseconds{};
};
