#pragma once

#include "simd/interleave.h"
#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

enum class First { kRed, kBlue };

/// Colours as three bytes a pixel, or as four of which the last is 0.
template <First kFirst, std::size_t kPixelBytes>
struct Interleaved {
  static constexpr std::size_t kBytes = kPixelBytes;

  static void Pixel(Rgb<std::uint8_t> pixel, std::uint8_t* to) {
    to[0] = kFirst == First::kRed ? pixel.r : pixel.b;
    to[1] = pixel.g;
    to[2] = kFirst == First::kRed ? pixel.b : pixel.r;
    if constexpr (kBytes == 4) to[3] = 0;
  }

#if LM_LANES
  template <class To>
  static void GrayBlock(U8 v, To to) {
    if constexpr (kBytes == 4) {
      Block({v, v, v}, to);
    } else {
      StoreTripled(v, to);
    }
  }

  template <class To>
  static void Block(const RgbLanes<std::uint8_t>& in, To to) {
    const U8 first = kFirst == First::kRed ? in.r : in.b;
    const U8 last = kFirst == First::kRed ? in.b : in.r;
    if constexpr (kBytes == 4) {
      StoreInterleaved<std::uint8_t>(first, in.g, last, U8{}, to);
    } else {
      StoreInterleaved<std::uint8_t>(first, in.g, last, to);
    }
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
