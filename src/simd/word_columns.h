#pragma once

#include "simd/interleave.h"
#include "simd/rgb.h"

// Pixels of words whose even and odd columns were computed apart.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Words of the lower halves of one register's lanes, and of the upper halves of another's.
inline U32 WordPairs(U32 low, U32 high) { return U32(EvenOdd(U16(low), U16(high))); }

/// The pixels in the order of their columns.
inline RgbLanes<std::uint16_t> InTurn(const WordColumns& in) {
  return {U16(WordPairs(in.even.redBlue, in.odd.redBlue << 16)), U16(WordPairs(in.even.green, in.odd.green << 16)),
          U16(WordPairs(in.even.redBlue >> 16, in.odd.redBlue))};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
