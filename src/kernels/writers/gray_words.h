#pragma once

#include "simd/wide_stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Gray, or a plane, in 16-bit little-endian words.
struct GrayWords {
  static constexpr std::size_t kBytes = 2;

  static void Pixel(Rgb<std::uint16_t> pixel, std::uint8_t* to) { std::memcpy(to, &pixel.r, sizeof pixel.r); }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes<std::uint16_t>& in, To to) {
    Store(in.r, to);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
