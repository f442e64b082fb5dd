#pragma once

#include "kernels/yuv/yuv_to_rgb.h"
#include "simd/yuv_matrix.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// YUV to RGB by a matrix, scaled by 8192: each channel is the sum of its products and the constant, shifted right
/// by 13.
template <const YuvMatrix& kMatrix>
struct YuvByMatrix {
  static constexpr bool kFull = kMatrix.y == 8192 && kMatrix.constant == kYuvHalf;
  static constexpr bool kLumaWithV = !kFull;

  static Rgb<std::uint8_t> Color(const SourceLines& /*in*/, int y, int u, int v) {
    const int luma = kMatrix.y * y + kMatrix.constant;
    const int cu = u - 128;
    const int cv = v - 128;
    return {Clamp8((luma + kMatrix.vToR * cv) >> 13), Clamp8((luma + kMatrix.uToG * cu + kMatrix.vToG * cv) >> 13),
            Clamp8((luma + kMatrix.uToB * cu) >> 13)};
  }

#if LM_LANES
  // A sum of products of bytes has 16 bits, so factors are split into their lower 7 bits and the rest. Both sums are
  // exact, and rounding the lower one down before it is added is rounding down once. The factors of green are negative:
  // their upper parts are subtracted.
  static constexpr std::uint8_t Upper(int factor) {
    return static_cast<std::uint8_t>((factor < 0 ? -1 : 1) * (factor >> 7));
  }
  static constexpr std::uint8_t Lower(int factor) { return static_cast<std::uint8_t>(factor & 0x7F); }

  static I16 GreenLower(const YuvPairs& in) {
    return MultiplyAddBytes(in.uv, Lower(kMatrix.uToG), Lower(kMatrix.vToG));
  }
  static I16 GreenUpper(const YuvPairs& in) {
    return MultiplyAddBytes(in.uv, Upper(kMatrix.uToG), Upper(kMatrix.vToG));
  }

  static RgbWords Words(const SourceLines& /*in*/, const YuvPairs& in) {
    if constexpr (kFull) {
      // Luma is a whole number, and the rest is rounded by itself: four times a sample and a factor have 32768ths.
      const I16 y = I16(in.luma);
      const I16 green = (GreenLower(in) >> 7) - GreenUpper(in);
      return {y + MultiplyRounded(MultiplyAddBytes(in.uv, 0, 4), kMatrix.vToR), y + MultiplyRounded(green, 512),
              y + MultiplyRounded(MultiplyAddBytes(in.uv, 4, 0), kMatrix.uToB)};
    } else {
      // Samples are 128 less. Only blue exceeds 16 bits, where it is clamped.
      constexpr int kConstant = 128 * kMatrix.y + kMatrix.constant;
      constexpr std::int16_t kUpper = kConstant >> 7, kLower = kConstant & 0x7F;
      constexpr std::uint8_t kUpperY = Upper(kMatrix.y), kLowerY = Lower(kMatrix.y);
      const I16 upper = MultiplyAddBytes(in.luma, kUpperY, 0) + kUpper;
      const I16 lower = MultiplyAddBytes(in.luma, kLowerY, 0) + kLower;
      const I16 red = MultiplyAddBytes(in.luma, kUpperY, Upper(kMatrix.vToR)) + kUpper;
      const I16 redLower = MultiplyAddBytes(in.luma, kLowerY, Lower(kMatrix.vToR)) + kLower;
      const I16 green = upper - GreenUpper(in);
      const I16 blue = upper + ((lower + MultiplyAddBytes(in.uv, Lower(kMatrix.uToB), 0)) >> 7);
      return {(red + (redLower >> 7)) >> 6, (green + ((lower + GreenLower(in)) >> 7)) >> 6,
              AddClamped(blue, MultiplyAddBytes(in.uv, Upper(kMatrix.uToB), 0)) >> 6};
    }
  }

  static RgbLanes<std::uint8_t> Color(const SourceLines& in, U8 y, U8 u, U8 v) {
    return ColorsOf<YuvByMatrix>(in, y, u, v);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
