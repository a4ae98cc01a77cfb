// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <utility>
#include <vector>

/// The library's operations as scalar loops over whole pictures, one pass after the other. Faster
/// implementations are measured against them.
namespace ScalarLoops {

cv::Mat resized(const cv::Mat& source, double scale, cv::Size size, float filterB, float filterC);

std::pair<cv::Mat, cv::Mat> split(const cv::Mat& pixels);
cv::Mat merged(const cv::Mat& chroma, const cv::Mat& alpha);

bool isMonochrome(const cv::Mat& mat);
void makeMonochrome(cv::Mat& mat);
bool isLumaNoise(const cv::Mat& mat);

std::string encoded(const std::vector<unsigned char>& bytes);
std::vector<unsigned char> decoded(const std::string& text);

} // namespace ScalarLoops
