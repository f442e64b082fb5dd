#pragma once

#include <string>

#include "LmImagingLib/Image.h"
#include "image/layout.h"

namespace LmImagingLib {

/// What can run a conversion beside the converter's own `Convert`.
enum class WalkKind {
  kNone,   ///< nothing: an application's converter
  kCopy,   ///< bytes are copied line by line
  kLines,  ///< its `ConvertLine`, called for any lines at any distance
  kChain,  ///< the same of both its stages
};

/// A conversion that was found to be possible.
struct ConversionPlan {
  const PixelConverter* converter = nullptr;
  WalkKind walk = WalkKind::kNone;
  ImageLayout source, destination;
  std::uint64_t sourceLine = 0, destinationLine = 0;  ///< bytes from a line to the next
  std::uint32_t width = 0, height = 0;
  std::uint32_t first = 0, end = 0;  ///< the lines to convert
  std::uint32_t sourceWidth = 0;     ///< pixels that make up a source line with its padding; 0 if none do

  bool IsWhole() const { return first == 0 && end == height; }
  bool IsDense() const { return sourceWidth == width; }
};

/// Checks a conversion and plans it.
/// @return the result and message to refuse it with; `plan` is complete if it is OK
ConversionResult PlanConversion(const ConstImageView& source, const ImageView& destination,
                                const ConvertOptions& options, ConversionPlan& plan);

}  // namespace LmImagingLib
