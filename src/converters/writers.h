#pragma once

#include "simd/kernel.h"

namespace LmImagingLib {

/// A destination layout.
struct Writer {
  Twins<StoreKernel> store;
  std::uint32_t pixelBytes;  ///< of planar layouts: bytes in one plane
  std::uint32_t planes = 0;  ///< planes of plain bytes, into which sources decode directly; 0 where pixels interleave
};

LM_DECLARE_KERNEL(StoreKernel, StoreRGB16)
LM_DECLARE_KERNEL(StoreKernel, StoreRGB24)
LM_DECLARE_KERNEL(StoreKernel, StoreBGR24)
LM_DECLARE_KERNEL(StoreKernel, StoreRGB32)
LM_DECLARE_KERNEL(StoreKernel, StoreBGR32)
LM_DECLARE_KERNEL(StoreKernel, StorePlanar24)
LM_DECLARE_KERNEL(StoreKernel, StoreGrayscale8)
LM_DECLARE_KERNEL(StoreKernel, StoreGrayscale10)
LM_DECLARE_KERNEL(StoreKernel, StoreGrayscale12)
LM_DECLARE_KERNEL(StoreKernel, StoreGrayscale14)
LM_DECLARE_KERNEL(StoreKernel, StoreGrayscale16)

// The template arguments of the converter families. Each layout is defined in the file of its name in this folder.
struct OutputRGB16 {
  static constexpr Writer kWriter{kStoreRGB16, 2};
};
struct OutputRGB24 {
  static constexpr Writer kWriter{kStoreRGB24, 3};
};
struct OutputBGR24 {
  static constexpr Writer kWriter{kStoreBGR24, 3};
};
struct OutputRGB32 {
  static constexpr Writer kWriter{kStoreRGB32, 4};
};
struct OutputBGR32 {
  static constexpr Writer kWriter{kStoreBGR32, 4};
};
struct OutputPlanar24 {
  static constexpr Writer kWriter{kStorePlanar24, 1, 3};
};
struct OutputGrayscale8 {
  static constexpr Writer kWriter{kStoreGrayscale8, 1, 1};
};
struct OutputGrayscale10 {
  static constexpr Writer kWriter{kStoreGrayscale10, 2};
};
struct OutputGrayscale12 {
  static constexpr Writer kWriter{kStoreGrayscale12, 2};
};
struct OutputGrayscale14 {
  static constexpr Writer kWriter{kStoreGrayscale14, 2};
};
struct OutputGrayscale16 {
  static constexpr Writer kWriter{kStoreGrayscale16, 2};
};

}  // namespace LmImagingLib
