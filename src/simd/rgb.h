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

/// A block of pixels of bytes in words, those in even and those in odd columns apart.
struct ByteColumns {
  RgbLanes<std::uint16_t> even, odd;
};

/// The halves of words that these bytes are in: the upper ones where so, and otherwise the lower ones. The other half
/// is 0. Red and blue of even columns are in the lower ones.
template <bool kEvenGreenUpper, bool kOddColorsUpper, bool kOddGreenUpper>
struct Halves {
  static constexpr bool kEvenGreen = kEvenGreenUpper, kOddColors = kOddColorsUpper, kOddGreen = kOddGreenUpper;
};

/// A block of pixels whose columns are made apart: `columns.Made<Halves>()` puts their bytes where a writer wants them.
template <class Columns>
struct PixelColumns {
  Columns columns;
};

/// The pixels in the order of their columns.
template <class Columns>
inline RgbLanes<std::uint8_t> Merged(const PixelColumns<Columns>& in) {
  const ByteColumns made = in.columns.template Made<Halves<false, true, true>>();
  const auto merged = [](Lanes<std::uint16_t> even, Lanes<std::uint16_t> odd) {
    return Lanes<std::uint8_t>(even | odd);
  };
  return {merged(made.even.r, made.odd.r), merged(made.even.g, made.odd.g), merged(made.even.b, made.odd.b)};
}

/// A block of pixels of four bytes in their order, the fourth byte 0 or anything.
/// @tparam kRedIsFirst  whether red is the lowest byte, and blue the third; otherwise it is the other way around
template <bool kRedIsFirst>
struct FourBytePixels {
  U32 part[4];
};

/// A block of gray, as the destination wants it.
template <class Sample>
struct GrayLanes {
  Lanes<Sample> gray;
};

/// Half a register of pixels, in words that are not yet clamped to bytes.
struct RgbWords {
  I16 r, g, b;
};

/// A block of pixels in fours that are dealt out to the 16 bytes of a register in turn, or in their order on registers
/// of 32 bytes. `both(limitsRed, words)` makes the words of both halves, of which red is limited to bytes already where
/// a constant says so.
template <class Both>
struct DealtPixels {
  Both both;
};
#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
