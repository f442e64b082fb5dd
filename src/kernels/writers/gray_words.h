#pragma once

#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Gray in 16-bit little-endian words, shifted left by `kShift`.
template <int kShift>
struct GrayWords {
  static constexpr std::size_t kBytes = 2;

  static void Pixel(Rgb pixel, std::uint8_t* to) {
    const auto word = static_cast<std::uint16_t>(pixel.r << kShift);
    std::memcpy(to, &word, sizeof word);
  }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes& in, To to) {
    Store(U8(FirstHalf(in.r) << kShift), to);
    Store(U8(SecondHalf(in.r) << kShift), to + kLanes);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
