#pragma once

#include "simd/strip.h"

namespace LmImagingLib {

/// A destination layout.
struct Writer {
  StoreKernel* store;
  std::uint32_t pixelBytes;  ///< of planar layouts: bytes in one plane
};

namespace scalar {
StoreKernel StoreRGB16, StoreRGB24, StoreBGR24, StoreRGB32, StoreBGR32, StorePlanar24;
StoreKernel StoreGrayscale8, StoreGrayscale10, StoreGrayscale12, StoreGrayscale14, StoreGrayscale16;
}  // namespace scalar

// The template arguments of the converter families. Each layout is defined in the file of its name in this folder.
struct OutputRGB16 {
  static constexpr Writer kWriter{scalar::StoreRGB16, 2};
};
struct OutputRGB24 {
  static constexpr Writer kWriter{scalar::StoreRGB24, 3};
};
struct OutputBGR24 {
  static constexpr Writer kWriter{scalar::StoreBGR24, 3};
};
struct OutputRGB32 {
  static constexpr Writer kWriter{scalar::StoreRGB32, 4};
};
struct OutputBGR32 {
  static constexpr Writer kWriter{scalar::StoreBGR32, 4};
};
struct OutputPlanar24 {
  static constexpr Writer kWriter{scalar::StorePlanar24, 1};
};
struct OutputGrayscale8 {
  static constexpr Writer kWriter{scalar::StoreGrayscale8, 1};
};
struct OutputGrayscale10 {
  static constexpr Writer kWriter{scalar::StoreGrayscale10, 2};
};
struct OutputGrayscale12 {
  static constexpr Writer kWriter{scalar::StoreGrayscale12, 2};
};
struct OutputGrayscale14 {
  static constexpr Writer kWriter{scalar::StoreGrayscale14, 2};
};
struct OutputGrayscale16 {
  static constexpr Writer kWriter{scalar::StoreGrayscale16, 2};
};

}  // namespace LmImagingLib
