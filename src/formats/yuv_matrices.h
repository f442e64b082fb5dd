#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "simd/strip.h"

namespace LmImagingLib {

inline constexpr std::int32_t kYuvHalf = 1 << 12;  // of 8192, in which all factors are

/// The matrices of ITU-R BT.601 and BT.709, of the full and the studio range, rounded to 8192ths. Without a flag
/// colours have the system's own factors, in kernels of their own; it is the luma alone that comes from here.
struct YuvMatrices {
  // By its own factor of the luma, 1196 / 1024, all three channels are what they are at U = V = 128.
  static constexpr YuvMatrix kLuma{1196 * 8, 0, 0, 0, 0, -16 * 1196 * 8 + kYuvHalf, 16};
  // R = Y + 1.402 V, G = Y - 0.344136 U - 0.714136 V, B = Y + 1.772 U
  static constexpr YuvMatrix kFull601{8192, 11485, -2819, -5850, 14516, kYuvHalf};
  // 1.164384 (Y - 16), 1.792741, 0.213249, 0.532909, 2.112402
  static constexpr YuvMatrix kStudio709{9539, 14686, -1747, -4366, 17305, -16 * 9539 + kYuvHalf};
  // 1.5748, 0.187324, 0.468124, 1.8556
  static constexpr YuvMatrix kFull709{8192, 12901, -1535, -3835, 15201, kYuvHalf};
};

/// The matrix of a conversion, or null where the system's own factors apply.
/// @param luma  whether only gray is wanted
inline const YuvMatrix* MatrixOf(std::uint32_t flags, bool luma) {
  static constexpr YuvMatrix kFullLuma{8192, 0, 0, 0, 0, kYuvHalf};
  static constexpr YuvMatrix kStudioLuma709{9539, 0, 0, 0, 0, -16 * 9539 + kYuvHalf, 16};
  const bool full = (flags & ConversionFlags::kFullRange) != 0;
  const bool bt709 = (flags & ConversionFlags::kBT709) != 0;
  if (luma) return full ? &kFullLuma : bt709 ? &kStudioLuma709 : &YuvMatrices::kLuma;
  if (full) return bt709 ? &YuvMatrices::kFull709 : &YuvMatrices::kFull601;
  return bt709 ? &YuvMatrices::kStudio709 : nullptr;
}

}  // namespace LmImagingLib
