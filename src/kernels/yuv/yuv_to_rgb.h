#pragma once

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
  static Rgb<std::uint8_t> Color(const SourceLines& /*in*/, int y, int u, int v) {
    const int luma = YUVGainY * y - YUVOffsetY + YUVRound;
    const int cu = u - 128;
    const int cv = v - 128;
    return {Clamp8((luma + YUVCoefVtoR * cv) >> 10), Clamp8((luma - YUVCoefVtoG * cv - YUVCoefUtoG * cu) >> 10),
            Clamp8((luma + YUVCoefUtoB * cu) >> 10)};
  }

#if LM_LANES
  // The same in 16 bits. Divided by 4, the sums are 299 y + 410.5 cv - 4656, 299 y - 208 cv - 100 cu - 4656 and
  // 299 y + 516 cu - 4656, to be shifted by 8. Divided by another 4 they fit: 299/4 y is at most 19061, and the
  // chroma between -17548 and 15219; their sum may exceed 16 bits in blue only. Rounding down twice is rounding down
  // once, and 52 cv, 25 cu, 129 cu and 1164 are whole. Red has fractions in both terms, 410.5/4 cv and 299/4 y; the
  // carry is made by the multiplication of y.

  // Y, U and V come in the upper bytes of words; a chroma of 128 is 0 then.
  struct Chroma {
    Chroma(U16 u, U16 v) : Chroma(I16(u ^ 0x8000), I16(v ^ 0x8000)) {}

    I16 r, g, b;
    U16 quarters;  ///< that red's chroma was rounded down by

   private:
    static constexpr int kRed = 26272;  // 410.5/4 x 256, as 16 bits are lost to MultiplyHigh and 8 are in cv already

    // 129 x 256 is too large for a signed factor, hence minus 127 and one whole cu.
    Chroma(I16 cu, I16 cv)
        : r(MultiplyHigh(cv, kRed) - 1164),
          g(-MultiplyHigh(cv, 52 * 256) - MultiplyHigh(cu, 25 * 256) - 1164),
          b(MultiplyHigh(cu, -127 * 256) + cu - 1164),
          quarters(U16(cv) * kRed >> 14) {}
  };

  struct Words {
    I16 r, g, b;
  };

  // A shift by 6, as a product: shifts would wait for the shuffles around, with which they share their units.
  static I16 Down(I16 v) { return MultiplyHigh(v, 1 << 10); }

  static Words Convert(U16 y, const Chroma& chroma) {
    // n quarters, as n/256 of a y, add 0.29 n: enough to carry where 299/4 y has 4 - n quarters, and no more.
    constexpr std::uint16_t kLuma = 299 * 64;
    const I16 luma = I16(MultiplyHigh(y, kLuma));
    const I16 lumaOfRed = I16(MultiplyHigh(y | chroma.quarters, kLuma));
    return {Down(lumaOfRed + chroma.r), Down(luma + chroma.g), Down(AddClamped(luma, chroma.b))};
  }

  static RgbLanes<std::uint8_t> Color(const SourceLines& /*in*/, U8 y, U8 u, U8 v) {
    const Words low = Convert(LowWords(y), {LowWords(u), LowWords(v)});
    const Words high = Convert(HighWords(y), {HighWords(u), HighWords(v)});
    return {ClampJoin(low.r, high.r), ClampJoin(low.g, high.g), ClampJoin(low.b, high.b)};
  }

  /// Pairs of pixels that share their chroma.
  static RgbLanes<std::uint8_t> Color(const SourceLines& /*in*/, U16 evenY, U16 oddY, U16 u, U16 v) {
    const Chroma chroma(u, v);
    const Words even = Convert(evenY, chroma);
    const Words odd = Convert(oddY, chroma);
    return {ClampZip(even.r, odd.r), ClampZip(even.g, odd.g), ClampZip(even.b, odd.b)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
