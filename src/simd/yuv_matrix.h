#pragma once

#include <cstdint>

namespace LmImagingLib {

/// A conversion of YUV, scaled by 8192: R = y Y + vToR (V - 128) + constant, and so on.
struct YuvMatrix {
  std::int32_t y, vToR, uToG, vToG, uToB;
  std::int32_t constant;   ///< with the half that rounds
  std::int32_t black = 0;  ///< the luma of black, which is in the constant, too
};

inline constexpr std::int32_t kYuvHalf = 1 << 12;  // of 8192, in which all factors are

// The matrices of ITU-R BT.601 and BT.709, of the full and the studio range, rounded to 8192ths.
// R = Y + 1.402 V, G = Y - 0.344136 U - 0.714136 V, B = Y + 1.772 U
inline constexpr YuvMatrix kFull601{8192, 11485, -2819, -5850, 14516, kYuvHalf};
// 1.164384 (Y - 16), 1.792741, 0.213249, 0.532909, 2.112402
inline constexpr YuvMatrix kStudio709{9539, 14686, -1747, -4366, 17305, -16 * 9539 + kYuvHalf};
// 1.5748, 0.187324, 0.468124, 1.8556
inline constexpr YuvMatrix kFull709{8192, 12901, -1535, -3835, 15201, kYuvHalf};

}  // namespace LmImagingLib
