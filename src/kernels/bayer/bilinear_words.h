#pragma once

#include "simd/interleave.h"
#include "simd/loops.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// The words of a row from the column before the first pixel on, and one and two further on.
struct WordsAround {
  U16 left, own, right;
};

template <class Reader>
inline WordsAround LoadWordsAround(const Reader& read, std::size_t row) {
  const auto at = [&read, row](std::size_t column) { return U16(Pinned(read(row, 2 * column))); };
  return {at(0), at(1), at(2)};
}

/// The pixels of a row with those above and below, of samples of up to 13 bits: five of them sum up in 16 bits.
inline RgbLanes<std::uint16_t> BilinearWords(const WordsAround& a, const WordsAround& c, const WordsAround& b,
                                             Site site) {
  const U16 horizontal = c.left + c.right, vertical = a.own + b.own;
  const U16 corners = (a.left + a.right) + (b.left + b.right);
  // 52429 / 2^18 is a fifth; exact for all sums of 16 bits.
  const U16 fifth = MultiplyHigh(c.own + corners, 52429) >> 2;
  const U16 cross = (horizontal + vertical) >> 2;
  // The colour of the line, green, and the colour of the lines around, at green sites in even or in odd lanes.
  const bool greenFirst = IsGreen(site);
  const U16 line = greenFirst ? EvenOdd(horizontal >> 1, c.own) : EvenOdd(c.own, horizontal >> 1);
  const U16 green = greenFirst ? EvenOdd(fifth, cross) : EvenOdd(cross, fifth);
  const U16 other = greenFirst ? EvenOdd(vertical >> 1, corners >> 2) : EvenOdd(corners >> 2, vertical >> 1);
  const bool redInLine = IsInRedRow(site);
  return {redInLine ? line : other, green, redInLine ? other : line};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
