#pragma once

#include "kernels/yuv/yuv_pairs.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint8_t Clamp8(int value) { return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); }

// Scaled by 1024.
inline constexpr int YUVGainY = 1196, YUVOffsetY = 16 * YUVGainY, YUVRound = 512;
inline constexpr int YUVCoefVtoR = 1642, YUVCoefVtoG = 832, YUVCoefUtoG = 400, YUVCoefUtoB = 2064;

/// Studio-range YUV to RGB in the manner of ITU-R BT.601, scaled by 1024 and rounded by adding half before the shift:
/// R = 1.168 (Y - 16) + 1.604 (V - 128), G = 1.168 (Y - 16) - 0.8125 (V - 128) - 0.391 (U - 128),
/// B = 1.168 (Y - 16) + 2.016 (U - 128). Before clamping the results are between -277 and 535.
///
/// Two constants are this system's own: 1.168 where the standard's is 1.164 (255 / 219), and 1.604 where it is 1.596.
/// Colours are up to 2 lighter at the bright end. The other three are the standard's 0.813, 0.392 and 2.017, rounded.
struct Yuv {
  static constexpr bool kLumaWithV = true;

  static Rgb<std::uint8_t> Color(const SourceLines& /*in*/, int y, int u, int v) {
    const int luma = YUVGainY * y - YUVOffsetY + YUVRound;
    const int cu = u - 128;
    const int cv = v - 128;
    return {Clamp8((luma + YUVCoefVtoR * cv) >> 10), Clamp8((luma - YUVCoefVtoG * cv - YUVCoefUtoG * cu) >> 10),
            Clamp8((luma + YUVCoefUtoB * cu) >> 10)};
  }

#if LM_LANES
  // The same in 16 bits, of samples less 128: y', u', v'. Divided by 16, the sums are 74.75 y' + 102.625 v' + 8404,
  // 74.75 y' - 52 v' - 25 u' + 8404 and 74.75 y' + 129 u' + 8404, to be shifted by 6. Rounding down twice is rounding
  // down once, so fractions may be dropped before: of 74.75 y' alone in green and blue, whose chroma is whole, and of
  // 6 y' + 5 v' eighths in red, beside 74 y' + 102 v'. Only blue exceeds 16 bits, where it is clamped.
  //
  // Red may be limited to bytes at once (`kLimitsRed`): a clamped sum does so above, a clamped difference below. Blue
  // may be too small for that. Two halves are computed step by step: one waits less while the other has the pipes.
  // Inline, as compilers would rather call this, and hand vectors over in memory.
  template <bool kLimitsRed, std::size_t kHalves>
  [[gnu::always_inline]] static void Words(const YuvPairs (&in)[kHalves], RgbWords (&out)[kHalves]) {
    constexpr std::int16_t kConstant = 8404;                            // 128 * 74.75 - 1164
    constexpr std::int16_t kLimit = 16384, kBoth = kLimit + kConstant;  // 256 * 64
    I16 red[kHalves], luma[kHalves];
    for (std::size_t k = 0; k < kHalves; ++k) {
      red[k] = MultiplyAddBytes(in[k].luma, 74, 102) + (MultiplyAddBytes(in[k].luma, 6, 5) >> 3);
    }
    for (std::size_t k = 0; k < kHalves; ++k) {
      if constexpr (kLimitsRed) {
        out[k].r = I16(SubtractClamped(U16(AddClamped(red[k], I16{} + kBoth)), U16{} + kLimit) >> 6);
      } else {
        out[k].r = (red[k] + kConstant) >> 6;
      }
    }
    for (std::size_t k = 0; k < kHalves; ++k) luma[k] = MultiplyHigh(I16(U16(in[k].luma) << 8), 299 * 64) + kConstant;
    for (std::size_t k = 0; k < kHalves; ++k) out[k].g = (luma[k] - MultiplyAddBytes(in[k].uv, 25, 52)) >> 6;
    for (std::size_t k = 0; k < kHalves; ++k) {
      out[k].b = AddClamped(luma[k], MultiplyAddBytes(in[k].uv, 129, 0)) >> 6;
    }
  }
  [[gnu::always_inline]] static RgbWords Words(const SourceLines& /*in*/, const YuvPairs& in) {
    const YuvPairs half[1] = {in};
    RgbWords words[1];
    Words<false>(half, words);
    return words[0];
  }

  static RgbLanes<std::uint8_t> Color(const SourceLines& in, U8 y, U8 u, U8 v) { return ColorsOf<Yuv>(in, y, u, v); }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
