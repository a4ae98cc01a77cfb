// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <optional>
#include <vector>

/// A conversion between two RGB profiles that consist of three curves and a matrix, as those of
/// cameras and monitors do: tables of the curves, and one matrix for both. LittleCMS's conversion
/// of floats takes five times as long.
class MatrixTransform
{
public:
    /// From `source` to `target`, open profiles of LittleCMS; nothing where one of them is of
    /// another kind.
    static std::optional<MatrixTransform> between(void* source, void* target);

    /// Converts the `count` pixels at `pixels` and leaves those alone whose samples, as light of
    /// either profile, are not between 0 and 1; it appends their places to `outside`.
    void apply(cv::Vec3f* pixels, int count, std::vector<int>& outside) const;

private:
    using Curves = std::array<std::vector<float>, 3>;

    Curves m_decode; ///< samples to light, in equal steps
    cv::Matx33f m_matrix;
    Curves m_encode; ///< light to samples, in equal steps of the fourth root
};
