#pragma once

#include "simd/wide_stores.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// (77 r + 150 g + 29 b + 128) >> 8 of bytes, which fits 16 bits at each step.
inline U8 LumaLanes(const RgbLanes<std::uint8_t>& in) {
  const auto weigh = [](U16 r, U16 g, U16 b) { return (77 * r + 150 * g + 29 * b + 128) >> 8; };
  const U16 even = weigh(U16(in.r) & 0xFF, U16(in.g) & 0xFF, U16(in.b) & 0xFF);
  const U16 odd = weigh(U16(in.r) >> 8, U16(in.g) >> 8, U16(in.b) >> 8);
  return U8(even | odd << 8);
}

/// The same of words. 32 bits hold the sums; each of them is made of the words at the same place of two halves.
inline U16 LumaLanes(const RgbLanes<std::uint16_t>& in) {
  const auto weigh = [](U32 r, U32 g, U32 b) { return (77 * r + 150 * g + 29 * b + 128) >> 8; };
  const U32 even = weigh(U32(in.r) & 0xFFFF, U32(in.g) & 0xFFFF, U32(in.b) & 0xFFFF);
  const U32 odd = weigh(U32(in.r) >> 16, U32(in.g) >> 16, U32(in.b) >> 16);
  return U16(even | odd << 16);
}

inline void StoreLumaWords(const RgbLanes<std::uint16_t>& in, std::uint8_t* to, const FitLanes& fit) {
  Store(U8(fit(LumaLanes(in))), to);
}
inline void StoreLumaWords(const RgbLanes<std::uint8_t>& in, std::uint8_t* to, const FitLanes& fit) {
  const U8 luma = LumaLanes(in);
  Store(U8(fit(FirstHalf(luma))), to);
  Store(U8(fit(SecondHalf(luma))), to + kLanes);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
