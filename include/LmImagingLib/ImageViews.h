#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "LmImagingLib/Image.h"

// Views of the memory of containers and matrices, with their sizes.
namespace LmImagingLib {

namespace Detail {

/// The view of memory that `Pointer` leads to: to write to it, unless it is const.
template <class Pointer>
using ViewThrough = std::conditional_t<std::is_const_v<std::remove_pointer_t<Pointer>>, ConstImageView, ImageView>;

template <class Matrix, class = void>
struct HasElementSize : std::false_type {};
template <class Matrix>
struct HasElementSize<Matrix, std::void_t<decltype(std::declval<const Matrix&>().elemSize())>> : std::true_type {};

}  // namespace Detail

/// A view of the memory of a container or a range, such as a `std::vector` or a `std::span`.
///
/// The view has all bytes of the range, so that calls that take the view can refuse a range that is too short. It owns
/// nothing: it is valid as long as the memory of the range is.
/// @param type  the pixel type
/// @param range  an object with `data()` and `size()`, of elements of any size; no temporary container
/// @param width, height  of the image in pixels
/// @param lineSize  bytes from the beginning of a line to that of the next; 0 for lines without padding
/// @return an `ImageView`, or a `ConstImageView` where `data()` points to const elements
template <class Range>
auto ViewOf(PixelTypeID type, Range&& range, unsigned long width, unsigned long height, std::size_t lineSize = 0) {
  using Pointer = decltype(range.data());
  using Element = std::remove_pointer_t<Pointer>;
  static_assert(std::is_lvalue_reference_v<Range> || std::is_trivially_copyable_v<std::decay_t<Range>>,
                "a view of a temporary container would outlive its memory");
  static_assert(std::is_trivially_copyable_v<Element>, "an image has elements of plain bytes or words");
  return Detail::ViewThrough<Pointer>{type, range.data(), range.size() * sizeof(Element), width, height, lineSize};
}

/// A view of the memory of a matrix such as OpenCV's `cv::Mat`, or of a part of one.
///
/// Its columns are the pixels of a line. Where the matrix has a member function `elemSize()`, an element must have as
/// many bytes as a pixel: otherwise the view has the size 0, which all calls refuse. Formats whose pixels share bytes
/// need a view of a range. The view owns nothing: it is valid as long as the memory of the matrix is.
/// @param type  the pixel type
/// @param matrix  an object with the members `rows` and `cols`, `step` (bytes from row to row) and `data` (the first
///   byte)
/// @return an `ImageView`, or a `ConstImageView` where `data` points to const
template <class Matrix>
auto ViewOf(PixelTypeID type, const Matrix& matrix) {
  const auto count = [](const auto& value) { return value > 0 ? static_cast<unsigned long>(value) : 0UL; };
  const unsigned long width = count(matrix.cols);
  const unsigned long height = count(matrix.rows);
  const auto step = static_cast<std::size_t>(matrix.step);
  std::size_t size = RequiredSize(type, width, height, step).value_or(0);
  if constexpr (Detail::HasElementSize<Matrix>::value) {
    if (RequiredSize(type, width, 1) != static_cast<std::size_t>(width) * matrix.elemSize()) size = 0;
  }
  return Detail::ViewThrough<decltype(matrix.data)>{type, matrix.data, size, width, height, step};
}

}  // namespace LmImagingLib
