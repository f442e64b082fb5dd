#pragma once

#include <cstdint>

#include "simd/lanes.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// A pixel.
template <class Sample>
struct Rgb {
  Sample r, g, b;
};

/// Says which samples a block has.
template <class Sample>
struct Of {};

#if LM_LANES
/// A block of pixels.
template <class Sample>
struct RgbLanes {
  Lanes<Sample> r, g, b;
};

/// Half a block of pixels in lanes of 32 bits: red with blue in the upper half, and green. Words of 16 bits have 0
/// above green; narrower ones may have anything there.
struct WordPixels {
  U32 redBlue, green;
};

/// A block of pixels of words, those in even and those in odd columns apart.
struct WordColumns {
  WordPixels even, odd;
};

/// Half a register of pixels, in words that are not yet clamped to bytes.
struct RgbWords {
  I16 r, g, b;
};

/// A block of pixels in fours that are dealt out to the 16 bytes of a register in turn. `half(k)` makes the words of
/// one half.
template <class Half>
struct DealtPixels {
  Half half;
};
#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
