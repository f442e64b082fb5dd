#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <opencv2/core/mat.hpp>
#include <string>

#include "LmImagingLib/Development.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/ImageViews.h"
#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

// Matrices of OpenCV as images, and images as matrices. The library does not need OpenCV: a program that includes this
// header links it. LmImagingLib.h leaves it out.
namespace LmImagingLib {

/// A pixel type that matrices have, in the order of colours that OpenCV expects.
struct MatType {
  int matrix;        ///< the type of the matrix, such as `CV_8UC3`
  PixelTypeID type;  ///< the pixel type of the same bytes
};

/// Gray, BGR and BGRA, of 8 and 16 bits.
inline constexpr MatType kMatTypes[] = {{CV_8UC1, 0x10001},  {CV_8UC3, 0x420006}, {CV_8UC4, 0x20007},
                                        {CV_16UC1, 0x10005}, {CV_16UC3, 0x20A40}, {CV_16UC4, 0x20A41}};

/// The pixel type of a matrix of `type`, such as `CV_8UC3`; 0, which all calls refuse, if there is none.
inline PixelTypeID TypeOfMat(int type) {
  const auto* const found = std::find_if(std::begin(kMatTypes), std::end(kMatTypes),
                                         [type](const MatType& row) { return row.matrix == type; });
  return found == std::end(kMatTypes) ? 0 : found->type;
}

/// A view of a matrix of gray, BGR or BGRA. It is valid as long as the memory of the matrix is.
inline ImageView ViewOfMat(cv::Mat& matrix) { return ViewOf(TypeOfMat(matrix.type()), matrix); }
/// The same, to read.
inline ConstImageView ViewOfMat(const cv::Mat& matrix) { return ViewOf(TypeOfMat(matrix.type()), matrix); }

/// A view of a matrix whose rows are lines of any format, packed ones included.
/// @param matrix  each row has the bytes of a line, as elements of any type
/// @param width  pixels of a line
inline ImageView ViewOfRows(PixelTypeID type, const cv::Mat& matrix, unsigned long width) {
  const bool isImage = matrix.dims == 2 && !matrix.empty();
  const std::size_t line = isImage ? static_cast<std::size_t>(matrix.cols) * matrix.elemSize() : 0;
  const std::size_t step = isImage ? static_cast<std::size_t>(matrix.step) : 0;
  const auto rows = isImage ? static_cast<std::size_t>(matrix.rows) : 0;
  // Lines that are longer than a row would be read from the next one.
  const bool isLong = RequiredSize(type, width, 1).value_or(line + 1) > line;
  return {type, matrix.data, isLong ? 0 : (rows - 1) * step + line, width, static_cast<unsigned long>(rows), step};
}

/// A matrix whose rows are lines of a camera's format.
struct CameraMat {
  ImageView view;                ///< refused by all calls if the format is unknown
  unsigned long flags = 0;       ///< bits of `ConversionFlags` that the name says: the layout of a mosaic, and so on
  const char* reason = nullptr;  ///< why the format is unknown, as a sentence; null otherwise
};

/// The same for a format that is named as cameras name it.
/// @param format  a name of the GenICam Pixel Format Naming Convention, such as "BayerRG12p"
inline CameraMat ViewOfRows(const char* format, const cv::Mat& matrix, unsigned long width) {
  const PFNCResult found = FindPFNC(format);
  if (!found) return {{}, 0, found.reason};
  return {ViewOfRows(found.format->type, matrix, width), found.format->flags, nullptr};
}

namespace Detail {

/// Makes a matrix of the size that a source becomes, and hands it over after `convert` has filled it.
template <class Convert>
ConversionResult MakeMat(const ConstImageView& source, int type, bool toHalf, cv::Mat& matrix, const Convert& convert) {
  using LmBaseLib::Result;
  if (!RegisterExtendedFormats().IsOK()) return {Result::NOT_ENOUGH_MEMORY, "out of memory"};
  if (TypeOfMat(type) == 0) {
    return {Result::INVALID_PARAMETER, "type is " + std::to_string(type) +
                                           "; allowed: CV_8UC1 (0), CV_8UC3 (16), CV_8UC4 (24), CV_16UC1 (2), "
                                           "CV_16UC3 (18) and CV_16UC4 (26)"};
  }
  const PixelType* const from = PixelTypeFactory::FindPixelType(source.type);
  const unsigned long divisor = toHalf && from != nullptr && from->IsBayerPattern() ? 2 : 1;
  const unsigned long width = source.width / divisor, height = source.height / divisor;
  constexpr unsigned long kMost = 0x7FFFFFFF;
  // Before there is memory for it, a picture is refused that cannot be.
  const auto bytes = RequiredSize(source.type, source.width, source.height, source.lineSize);
  if (!bytes || *bytes > source.size || width == 0 || height == 0 || width > kMost || height > kMost) {
    unsigned char none = 0;
    return convert(ImageView{TypeOfMat(type), &none, 0, width, height, 0});
  }
  cv::Mat made = matrix;  // keeps memory that fits
  made.create(static_cast<int>(height), static_cast<int>(width), type);
  ConversionResult result = convert(ViewOfMat(made));
  if (result.IsOK()) matrix = made;
  return result;
}

}  // namespace Detail

/// Converts an image to a matrix. It registers the extended formats, which deep matrices need.
/// @param source  the image, such as a camera's buffer
/// @param type  `CV_8UC1`, `CV_8UC3` (BGR), `CV_8UC4`, `CV_16UC1`, `CV_16UC3` or `CV_16UC4`
/// @param matrix  receives the picture. Memory of the right size and type is used again, that of a part of a matrix
///   included. A refused call leaves it as it was. `cv::Mat::create` may throw `cv::Exception`.
/// @param options  as for `ConvertImage`; a mosaic needs its layout in the flags
inline ConversionResult ConvertToMat(const ConstImageView& source, int type, cv::Mat& matrix,
                                     const ConvertOptions& options = {}) {
  return Detail::MakeMat(source, type, (options.flags & ConversionFlags::kHalfSize) != 0, matrix,
                         [&](const ImageView& made) { return ConvertImage(source, made, options); });
}

/// Develops a frame to a matrix; otherwise as `ConvertToMat`.
inline ConversionResult DevelopToMat(const Development& development, const ConstImageView& source, int type,
                                     cv::Mat& matrix, const DevelopOptions& options = {}) {
  return Detail::MakeMat(source, type, development.Settings().method == ConversionFlags::kHalfSize, matrix,
                         [&](const ImageView& made) { return Develop(development, source, made, options); });
}

}  // namespace LmImagingLib
