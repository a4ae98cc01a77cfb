// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QImage>

#include <opencv2/core.hpp>

#include <string>
#include <vector>

/// Operations on `cv::Mat`: conversion, planes, resampling, analysis, bytes and rotation.
///
/// Colour matrices hold R, G, B (and A) in this order, which is the byte layout of
/// `QImage::Format_RGBA32FPx4` and not OpenCV's customary B, G, R. Log lines print element types as
/// OpenCV's type codes: depth + (channels - 1) x 8.
///
/// @par Thread safety
/// All functions are reentrant and keep no state, so any thread may call them. A function that
/// writes into a matrix of the caller needs that matrix for itself.
///
/// @par Ownership
/// Every result is a new buffer that belongs to the caller. The exception is a function with
/// nothing to change: it returns its input as a header copy that shares the pixels, and says so
/// below. A result must not outlive an unloaded library. Views (submatrices) are read by their own
/// row stride.
///
/// @par Units
/// Sizes and positions are pixels, factors are output pixels per input pixel, angles are radians
/// unless the text says degrees.
///
/// @par Failure
/// A function that refuses its input writes one log line and returns the neutral value that its
/// entry names (an empty matrix, a null image, `false`). No function throws by itself. A
/// `cv::Exception` of OpenCV reaches the caller unchanged.
///
/// @since 1.0
namespace CvUtils {

/// @defgroup conversion Images and element depths
/// @ingroup matrices
/// @{

/// The image over the pixels of `mat`, without copying them: `format` must be the format whose
/// pixel layout is the element layout of `mat`. The image keeps the pixels alive, and later writes
/// to the matrix show in the image; `bits()` on the only image over a matrix writes into the
/// matrix.
///
/// A null image for an empty matrix. A null image and a warning for an invalid format, for a format
/// whose pixels take more bits than an element of `mat`, and for a matrix of more than two
/// dimensions.
IMAGEUTILS_EXPORT QImage matToQImage(const cv::Mat& mat, QImage::Format format);

/// `mat` with its element depth changed to the OpenCV depth code `depth`, its channel count kept,
/// and its values scaled so that the full range of one depth maps onto the other's: 255 for
/// `CV_8U`, 65535 for `CV_16U`, 32767 for `CV_8S` and `CV_16S`, 1 for the float depths. Integers
/// are rounded to nearest (ties to even) and saturate, but a float whose scaled value lies beyond
/// the 32-bit integers becomes 0 at 8 bits, because OpenCV converts through `int` (for 8 bits the
/// limit is an input of 8.4e6).
///
/// The matrix itself, shared, when it has that depth already. For `CV_32S` and for codes outside 0
/// to 7 a warning is written and the full range counts as 1; the low three bits of `depth` then
/// choose the depth of the result.
IMAGEUTILS_EXPORT cv::Mat convert(const cv::Mat& mat, int depth);

/// The bytes that the rows of `mat` span: rows x row stride, so a view counts its rows at its
/// parent's stride. 0 for an empty matrix.
IMAGEUTILS_EXPORT unsigned long long memoryUsage(const cv::Mat& mat);

/// @}
/// @defgroup planes Colour and alpha
/// @ingroup matrices
/// @{

/// Splits `mat`, of 2 or 4 channels and any depth, into `chroma` (all channels but the last) and
/// `alpha` (the last one), both new buffers; either output may be the variable that holds `mat`.
///
/// For another channel count a critical line is written and both outputs are matrices of undefined
/// content: `chroma` of one channel fewer (empty for one channel), `alpha` of one channel.
IMAGEUTILS_EXPORT void splitChromaAlpha(const cv::Mat& mat, cv::Mat& chroma, cv::Mat& alpha);

/// `chroma` (1 or 3 channels) with `alpha` (one channel, same size and depth) as its last channel.
///
/// The chroma itself, shared, when `alpha` is empty, and, with a critical line, for another channel
/// count. OpenCV throws when size or depth differ.
IMAGEUTILS_EXPORT cv::Mat mergeChromaAlpha(const cv::Mat& chroma, const cv::Mat& alpha);

/// Splits an image whose pixels are four 32-bit floats R, G, B, A (`QImage::Format_RGBA32FPx4`)
/// into `chroma` (`CV_32FC3`) and `alpha` (`CV_32FC1`), which stay valid without the image. The
/// pixels are reached through `QImage::bits()`, so an image that shares its data detaches first.
///
/// `false` with a critical line, the outputs untouched, for a null image, for a format of fewer
/// than 128 bits per pixel, and when there is no memory to detach.
IMAGEUTILS_EXPORT bool qimageToMat(QImage& image, cv::Mat& chroma, cv::Mat& alpha);

/// The `QImage::Format_RGBA32FPx4` image of a `CV_32FC3` chroma and a `CV_32FC1` alpha; an empty
/// alpha means opaque (1.0). An alpha of another size is resized in place, bilinearly, so the
/// caller's matrix keeps the new size. The time taken is logged.
///
/// A null image and a critical line, nothing touched, for other element types.
IMAGEUTILS_EXPORT QImage matToQImage(const cv::Mat& chroma, cv::Mat& alpha);

/// @}
/// @defgroup resampling Resampling
/// @ingroup matrices
/// @{

/// The `CV_32FC3` image `mat` resampled by `scaleX` horizontally and `scaleY` vertically (below
/// 0.000001: by `scaleX` too) with the separable cubic filter of Mitchell and Netravali,
/// "Reconstruction Filters in Computer Graphics", 1988, with the parameters B = `filterB` and C =
/// `filterC`; a reduction stretches the filter by 1/scale. The result has ceil(cols x scaleX)
/// columns and ceil(rows x scaleY) rows. Output sample 0 lies on input sample 0, and edge samples
/// are repeated outwards. Values are not clamped. A positive `maxHeight` or `maxWidth` cuts the
/// result off at the bottom or right; the scale stays.
///
/// The bits are the same for any number of threads. An empty matrix and a warning for an empty
/// matrix or another type, a factor that is not finite or not above 0 or needs a filter radius
/// above 2^20, a filter parameter that is not finite, and sizes beyond int or beyond the address
/// space.
IMAGEUTILS_EXPORT cv::Mat resize(const cv::Mat& mat, double scaleX, double scaleY, int maxHeight,
                                 int maxWidth, float filterB, float filterC);

/// The `CV_32FC3` image `mat` enlarged by `scale` in equal steps by `resize` with B = C = 0.33333:
/// one step up to `maxStepScale`, otherwise the whole number of steps nearest to ln(scale) /
/// ln(maxStepScale), so that a step may exceed the limit somewhat. `maxHeight` and `maxWidth` cut
/// off the last step's result, as in `resize`.
///
/// The input itself, shared, with a warning, when `scale` exceeds a `maxStepScale` of 1 or below,
/// or would need more than 1000 steps. An empty matrix and a warning for what `resize` refuses.
IMAGEUTILS_EXPORT cv::Mat upsample(const cv::Mat& mat, float scale, int maxHeight, int maxWidth,
                                   float maxStepScale);

/// @}
/// @defgroup analysis Grey and noise
/// @ingroup matrices
/// @{

/// Whether the channels of every pixel of `mat` (`CV_8U`, `CV_16U` or `CV_32F`) are equal, without
/// any tolerance: a NaN equals nothing, -0.0 equals 0.0. One channel is monochrome.
///
/// `false` and a critical line for another depth.
IMAGEUTILS_EXPORT bool isMonochrome(const cv::Mat& mat);

/// Replaces every pixel of the `CV_16UC3` matrix `mat` by the integer mean of its channels, in
/// place.
///
/// For another type a critical line is written and the matrix stays as it is.
IMAGEUTILS_EXPORT void toMonochrome(cv::Mat& mat);

/// Whether the fine detail of the R, G, B (A ignored) image `mat` of depth `CV_8U`, `CV_16U` or
/// `CV_32F` lies in its luminance: whether the mean absolute Laplacian of Y exceeds four times that
/// of U and V together. At 8 bits only the positive half of the Laplacian counts. `false` for a
/// uniform image.
///
/// OpenCV throws for inputs that it cannot convert to YUV.
IMAGEUTILS_EXPORT bool isLumaNoise(const cv::Mat& mat);

/// @}
/// @defgroup bitmaps Writing bitmaps
/// @ingroup matrices
/// @{

/// Writes `mat` as a Windows bitmap: resized by `scale` (bilinear), converted to 8 bits as value x
/// `alpha` + `beta` (rounded, saturated), its colours converted by the OpenCV code
/// `colorConversion` (`COLOR_RGB2BGR` for this library's channel order). The suffix of `path` must
/// be exactly "bmp". OpenCV's codecs are loaded at the first call.
///
/// Another suffix is refused with a critical line, as is every call when OpenCV's codecs are not
/// installed. A failed write is not reported, and a full disk leaves a truncated file: a program
/// that must know writes to a temporary name and compares the length. OpenCV throws for a `scale`
/// of 0 or below and for a code that does not fit.
IMAGEUTILS_EXPORT void imwrite(const QString& path, const cv::Mat& mat, int colorConversion,
                               float alpha, float beta, float scale);

/// @}
/// @defgroup bytes Bytes, base64 and lists
/// @ingroup matrices
/// @{

/// `mat` as bytes: a header of four 32-bit little-endian integers (type code, rows, columns,
/// channels) and the elements in row-major order without gaps between rows, so a view gives its own
/// elements only. The 2 x 3 matrix of three 8-bit channels gives 34 bytes that begin with 16, 2, 3,
/// 3; the empty matrix gives 0, 0, 0, 1.
///
/// No bytes and a warning for a matrix of more than two dimensions.
IMAGEUTILS_EXPORT std::vector<unsigned char> serializeMat(const cv::Mat& mat);

/// The matrix that `serializeMat` wrote. The channel field is not read, bytes after the elements
/// are ignored, and a matrix without elements keeps its rows, columns and type.
///
/// An empty matrix and a warning, before anything is allocated, for fewer bytes than the header
/// says, for negative sizes and for an invalid type. Bytes from an untrusted source are safe.
IMAGEUTILS_EXPORT cv::Mat deserializeMat(const std::vector<unsigned char>& bytes);

/// `bytes` in base64 (RFC 4648, section 4): padded, on one line. The bytes 1, 2 give "AQI=".
IMAGEUTILS_EXPORT std::string base64Encode(const std::vector<unsigned char>& bytes);

/// The bytes of base64 text up to its end or to the first character, "=" among them, that is not an
/// ASCII letter, an ASCII digit, "+" or "/". The rest is ignored and no error is reported. Padding
/// may therefore be missing, text broken into lines gives its first line, and "AQ==" and "AQ" both
/// give the byte 1. A single leftover character gives no byte.
IMAGEUTILS_EXPORT std::vector<unsigned char> base64Decode(const std::string& text);

/// The rows of the `CV_32FC1` matrix `mat`, each a `QVariantList` of its elements as `float`.
///
/// An empty list and a warning for another type.
IMAGEUTILS_EXPORT QList<QVariant> matToList(const cv::Mat& mat);

/// @}
/// @defgroup rotation Rotated crops and similarity
/// @ingroup matrices
/// @{

/// `rect` turned about its centre by `angle` radians, as OpenCV describes it: the integral centre
/// of `QRect::center()`, (4, 4) for 10 x 10 at the origin, the size, and 360 - `angle` x 180 / pi
/// degrees, so an angle of 0 gives 360.
IMAGEUTILS_EXPORT cv::RotatedRect getRotatedRect(const QRect& rect, double angle);

/// The content of `rect` in an image, turned upright, with the size of `rect` rounded to whole
/// pixels. `mat` is the part of the image that `rect.boundingRect()` covers, of up to 32766 pixels
/// a side and any type that OpenCV warps. Corners outside `mat` move to its edge; samples are
/// bilinear, and black where they fall outside.
///
/// The matrix itself, shared, for an angle of exactly 0 or 360. An empty matrix and a warning for
/// an empty matrix, a side that is not finite, not above 1 or beyond int, and for corners that the
/// edges of `mat` leave on one line.
IMAGEUTILS_EXPORT cv::Mat applyRotation(const cv::Mat& mat, const cv::RotatedRect& rect);

/// 1 minus the Euclidean norm of `first` - `second` over all elements, divided by the number of
/// pixels: 1 for equal images, below 0 when the norm exceeds the number of pixels.
///
/// NaN for two empty matrices. OpenCV throws for another size or type of `second`.
IMAGEUTILS_EXPORT double similarity(const cv::Mat& first, const cv::Mat& second);

/// @}

} // namespace CvUtils
