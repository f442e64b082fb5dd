#pragma once

#include "converters/library_converter.h"

namespace LmImagingLib {

/// Copies 16-bit words to a type that differs in nothing but the order of its lines, or in the name of its depth.
class LineCopy : public LibraryConverter {
 public:
  LineCopy(const PixelTypeID& from, const PixelTypeID& to);
  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const override;
  ConversionExtent ExtentOf(const Frame& frame, std::uint32_t lines) const override;
};

}  // namespace LmImagingLib
