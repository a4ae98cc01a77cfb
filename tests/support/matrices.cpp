// SPDX-License-Identifier: Apache-2.0
#include <support/matrices.h>

#include <cstring>

cv::Mat TestSupport::numbered(int rows, int cols, int type)
{
    const int channels = CV_MAT_CN(type);
    cv::Mat values(rows, cols, CV_64FC(channels));
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < cols; ++x) {
            for (int c = 0; c < channels; ++c)
                values.ptr<double>(y, x)[c] = x + 10 * y + 100 * c;
        }
    }
    cv::Mat result;
    values.convertTo(result, type);
    return result;
}

cv::Mat TestSupport::noise(int rows, int cols, int type, unsigned int seed)
{
    cv::RNG random(seed);
    const int depth = CV_MAT_DEPTH(type);
    if (depth == CV_16F) {
        cv::Mat result;
        noise(rows, cols, CV_32FC(CV_MAT_CN(type)), seed).convertTo(result, type);
        return result;
    }
    cv::Mat result(rows, cols, type);
    if (depth == CV_32F || depth == CV_64F)
        random.fill(result, cv::RNG::UNIFORM, 0.0, 1.0);
    else
        random.fill(result, cv::RNG::UNIFORM, -2147483648.0, 2147483647.0, true);
    return result;
}

cv::Mat TestSupport::asView(const cv::Mat& mat)
{
    cv::Mat parent(mat.rows + 3, mat.cols + 5, mat.type());
    parent.setTo(cv::Scalar::all(77));
    cv::Mat view = parent(cv::Rect(2, 1, mat.cols, mat.rows));
    mat.copyTo(view);
    return view;
}

bool TestSupport::sameBytes(const cv::Mat& a, const cv::Mat& b)
{
    if (a.type() != b.type() || a.size() != b.size())
        return false;
    for (int y = 0; y < a.rows; ++y) {
        if (std::memcmp(a.ptr(y), b.ptr(y), std::size_t(a.cols) * a.elemSize()) != 0)
            return false;
    }
    return true;
}
