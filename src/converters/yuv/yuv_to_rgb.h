#pragma once

#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint8_t Clamp8(int value) { return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); }

/// Studio-range YUV to RGB by the factors of ITU-R BT.601, scaled by 1024 and rounded by adding half before the shift:
/// R = 1.168 (Y - 16) + 1.604 (V - 128), G = 1.168 (Y - 16) - 0.8125 (V - 128) - 0.391 (U - 128),
/// B = 1.168 (Y - 16) + 2.016 (U - 128). Before clamping the results lie between -277 and 535.
inline Rgb YuvToRgb(int y, int u, int v) {
  constexpr int kGainY = 1196, kOffsetY = 16 * kGainY, kVtoR = 1642, kVtoG = 832, kUtoG = 400, kUtoB = 2064;
  constexpr int kRound = 512;
  const int luma = kGainY * y - kOffsetY + kRound;
  const int cu = u - 128;
  const int cv = v - 128;
  return {Clamp8((luma + kVtoR * cv) >> 10), Clamp8((luma - kVtoG * cv - kUtoG * cu) >> 10),
          Clamp8((luma + kUtoB * cu) >> 10)};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
