#pragma once

#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint8_t Clamp8(int value) { return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); }

// Scaled by 1024.
inline constexpr int YUVGainY = 1196, YUVOffsetY = 16 * YUVGainY, YUVRound = 512;
inline constexpr int YUVCoefVtoR = 1642, YUVCoefVtoG = 832, YUVCoefUtoG = 400, YUVCoefUtoB = 2064;

/// Studio-range YUV to RGB by the factors of ITU-R BT.601, scaled by 1024 and rounded by adding half before the shift:
/// R = 1.168 (Y - 16) + 1.604 (V - 128), G = 1.168 (Y - 16) - 0.8125 (V - 128) - 0.391 (U - 128),
/// B = 1.168 (Y - 16) + 2.016 (U - 128). Before clamping the results lie between -277 and 535.
struct Yuv {
  static Rgb Color(int y, int u, int v) {
    const int luma = YUVGainY * y - YUVOffsetY + YUVRound;
    const int cu = u - 128;
    const int cv = v - 128;
    return {Clamp8((luma + YUVCoefVtoR * cv) >> 10), Clamp8((luma - YUVCoefVtoG * cv - YUVCoefUtoG * cu) >> 10),
            Clamp8((luma + YUVCoefUtoB * cu) >> 10)};
  }

#if LM_LANES
  // The same in 16 bits. The factors and 1024 are divided by what they have in common, and whole multiples of y, cu and
  // cv taken out of the shift: 1196/1024 = 1 + 43/256, 1642/1024 = 2 - (102 - 1/2)/256, 832/1024 = 1 - 48/256,
  // 400/1024 = 100/256, 2064/1024 = 2 + 4/256; and (512 - 19136)/4 = -4656. Halving cv rounds down, as the whole shift
  // does. No intermediate leaves 16 bits: luma is -4656..6309, 102 cv at most 13056, 48 cv - 100 cu at most 18944.
  struct Chroma {
    Chroma(I16 u, I16 v) : Chroma(u - 128, v - 128, 0) {}

    I16 r, g, b;                 // inside the shift
    I16 wholeR, wholeG, wholeB;  // outside

   private:
    Chroma(I16 cu, I16 cv, int /*centred*/)
        : r((cv >> 1) - cv * 102), g(cv * 48 - cu * 100), b(cu << 2), wholeR(cv + cv), wholeG(-cv), wholeB(cu + cu) {}
  };

  struct Words {
    I16 r, g, b;
  };

  static Words Convert(I16 y, const Chroma& chroma) {
    const I16 luma = y * 43 - 4656;
    return {((luma + chroma.r) >> 8) + (y + chroma.wholeR), ((luma + chroma.g) >> 8) + (y + chroma.wholeG),
            ((luma + chroma.b) >> 8) + (y + chroma.wholeB)};
  }

  static RgbLanes Color(U8 y, U8 u, U8 v) {
    const Words low = Convert(I16(LowHalf(y)), {I16(LowHalf(u)), I16(LowHalf(v))});
    const Words high = Convert(I16(HighHalf(y)), {I16(HighHalf(u)), I16(HighHalf(v))});
    return {ClampJoin(low.r, high.r), ClampJoin(low.g, high.g), ClampJoin(low.b, high.b)};
  }

  /// Pairs of pixels that share their chroma.
  static RgbLanes Color(I16 evenY, I16 oddY, I16 u, I16 v) {
    const Chroma chroma(u, v);
    const Words even = Convert(evenY, chroma);
    const Words odd = Convert(oddY, chroma);
    return {ClampZip(even.r, odd.r), ClampZip(even.g, odd.g), ClampZip(even.b, odd.b)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
