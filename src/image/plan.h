#pragma once

#include <string>

#include "LmImagingLib/Image.h"
#include "image/layout.h"

namespace LmImagingLib {

/// The ways to run a conversion.
enum class WalkKind {
  kApplication,  ///< the own `Convert` of an application's converter, for whole images
  kCopy,         ///< bytes are copied line by line
  kLines,        ///< one of the library's own converters: any lines at any distance
  kChain,        ///< two of them, through a band of lines
};

/// A conversion that was found to be possible.
struct ConversionPlan {
  const PixelConverter* converter = nullptr;
  WalkKind walk = WalkKind::kApplication;
  ImageLayout source, destination;
  std::uint64_t sourceLine = 0, destinationLine = 0;  ///< bytes from a line to the next
  std::size_t sourceBytes = 0, destinationBytes = 0;  ///< of the images
  std::uint32_t width = 0, height = 0;
  std::uint32_t perPixel = 1;        ///< source pixels along a side of a destination pixel: 2 for half the size, else 1
  std::uint32_t first = 0, end = 0;  ///< the lines to convert
  /// For an application's converter: the pixels that make up a source line with its padding; 0 if none do.
  std::uint32_t sourceWidth = 0;

  /// The geometry of the destination.
  std::uint32_t DestinationWidth() const { return width / perPixel; }
  std::uint32_t DestinationHeight() const { return height / perPixel; }
  std::uint32_t DestinationFirst() const { return first / perPixel; }
  std::uint32_t DestinationEnd() const { return end / perPixel; }

  bool IsDense() const { return source.DenseLine(width) == sourceLine; }
};

/// Checks a conversion and plans it.
/// @return the result and message to refuse it with; `plan` is complete if it is OK
ConversionResult PlanConversion(const ConstImageView& source, const ImageView& destination,
                                const ConvertOptions& options, ConversionPlan& plan);

}  // namespace LmImagingLib
