#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "simd/yuv_matrix.h"

namespace LmImagingLib {

/// The matrix of a conversion, or null where the system's own factors apply. Without a flag colours have these, in
/// kernels of their own; it is the luma alone that comes from here.
/// @param luma  whether only gray is wanted
inline const YuvMatrix* MatrixOf(std::uint32_t flags, bool luma) {
  // By its own factor of the luma, 1196 / 1024, all three channels are what they are at U = V = 128.
  static constexpr YuvMatrix kLuma{1196 * 8, 0, 0, 0, 0, -16 * 1196 * 8 + kYuvHalf, 16};
  static constexpr YuvMatrix kFullLuma{8192, 0, 0, 0, 0, kYuvHalf};
  static constexpr YuvMatrix kStudioLuma709{9539, 0, 0, 0, 0, -16 * 9539 + kYuvHalf, 16};
  const bool full = (flags & ConversionFlags::kFullRange) != 0;
  const bool bt709 = (flags & ConversionFlags::kBT709) != 0;
  if (luma) return full ? &kFullLuma : bt709 ? &kStudioLuma709 : &kLuma;
  if (full) return bt709 ? &kFull709 : &kFull601;
  return bt709 ? &kStudio709 : nullptr;
}

}  // namespace LmImagingLib
