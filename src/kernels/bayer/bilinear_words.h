#pragma once

#include "simd/loops.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// The sums of a 3 x 3 neighbourhood of words, and their means. Samples of up to 13 bits sum up in 16 bits.
struct NarrowSums {
  static U16 Two(U16 a, U16 b) { return (a + b) >> 1; }
  static U16 Four(U16 a, U16 b, U16 c, U16 d) { return ((a + b) + (c + d)) >> 2; }
  // 52429 / 2^18 is a fifth; exact for all sums of 16 bits.
  static U16 Five(U16 own, U16 a, U16 b, U16 c, U16 d) { return MultiplyHigh(own + ((a + b) + (c + d)), 52429) >> 2; }
};

/// The same of 14 to 16 bits, by means that keep what they truncate.
struct WideSums {
  static U16 Two(U16 a, U16 b) { return MeanDown(a, b); }

  // a + b + c + d = 4 mean + 2 r + r1 + r2, of which the last three are single bits.
  static U16 Four(U16 a, U16 b, U16 c, U16 d) {
    const U16 ab = MeanDown(a, b), cd = MeanDown(c, d);
    return MeanDown(ab, cd) + ((ab ^ cd) & (a ^ b) & (c ^ d) & 1);
  }

  // With the same terms, own + a + b + c + d = 5 mean + (own - mean) + rest, where the rest is 0 to 4. The fifth of the
  // difference is taken of its amount, as it has a sign.
  static U16 Five(U16 own, U16 a, U16 b, U16 c, U16 d) {
    const U16 ab = MeanDown(a, b), cd = MeanDown(c, d);
    const U16 mean = MeanDown(ab, cd);
    const U16 rest = 2 * ((ab ^ cd) & 1) + ((a ^ b) & 1) + ((c ^ d) & 1);
    const U16 above = own - Least(own, mean);  // 0 where own is below the mean
    const U16 below = mean - Least(own, mean);
    // floor((above + rest) / 5), from the fifth and what it leaves: above + rest may pass 16 bits.
    const U16 fifth = Fifth(above);
    const U16 up = fifth + Fifth(above - 5 * fifth + rest);
    // -floor((rest - below) / 5) where below is the greater: the fifth of the difference, rounded up.
    const U16 difference = below - Least(below, rest);
    const U16 down = (Fifth(difference - 1) + 1) & U16(difference > 0);
    return mean + (up & U16(below == 0)) - down;
  }

  static U16 Fifth(U16 v) { return MultiplyHigh(v, 52429) >> 2; }
};

/// Even lanes of one, odd lanes of another: a blend.
template <std::size_t... kLane>
inline U16 EvenOdd(U16 even, U16 odd, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(even, odd, (kLane % 2 != 0 ? kLane + sizeof...(kLane) : kLane)...);
}
inline U16 EvenOdd(U16 even, U16 odd) { return EvenOdd(even, odd, std::make_index_sequence<kLanes / 2>{}); }

template <class Sums, class Reader>
inline RgbLanes<std::uint16_t> BilinearWordsBy(const Reader& read) {
  const auto row = [&read](std::size_t k, std::size_t column) { return U16(Pinned(read(k, 2 * column))); };
  const U16 a0 = row(0, 0), a1 = row(0, 1), a2 = row(0, 2);
  const U16 c0 = row(1, 0), c1 = row(1, 1), c2 = row(1, 2);
  const U16 b0 = row(2, 0), b1 = row(2, 1), b2 = row(2, 2);
  const U16 horizontal = Sums::Two(c0, c2), vertical = Sums::Two(a1, b1);
  const U16 fifth = Sums::Five(c1, a0, a2, b0, b2);
  const U16 cross = Sums::Four(c0, c2, a1, b1), diagonal = Sums::Four(a0, a2, b0, b2);
  // The colour of the line, green, and the colour of the lines around, at green sites in even or in odd lanes.
  const bool greenFirst = IsGreen(read.in.site);
  const U16 line = greenFirst ? EvenOdd(horizontal, c1) : EvenOdd(c1, horizontal);
  const U16 green = greenFirst ? EvenOdd(fifth, cross) : EvenOdd(cross, fifth);
  const U16 other = greenFirst ? EvenOdd(vertical, diagonal) : EvenOdd(diagonal, vertical);
  const bool redInLine = IsInRedRow(read.in.site);
  return {redInLine ? line : other, green, redInLine ? other : line};
}

template <class Reader>
inline RgbLanes<std::uint16_t> BilinearWords(const Reader& read) {
  return read.in.mask < 1U << 13 ? BilinearWordsBy<NarrowSums>(read) : BilinearWordsBy<WideSums>(read);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
