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

/// The words of a row from the column before the first pixel on, and one and two further on.
struct WordColumns {
  U16 left, own, right;
};

template <class Reader>
inline WordColumns LoadWordColumns(const Reader& read, std::size_t row) {
  const auto at = [&read, row](std::size_t column) { return U16(Pinned(read(row, 2 * column))); };
  return {at(0), at(1), at(2)};
}

/// The pixels of a row with those above and below.
template <class Sums>
inline RgbLanes<std::uint16_t> BilinearWordsBy(const WordColumns& a, const WordColumns& c, const WordColumns& b,
                                               Site site) {
  const U16 horizontal = Sums::Two(c.left, c.right), vertical = Sums::Two(a.own, b.own);
  const U16 fifth = Sums::Five(c.own, a.left, a.right, b.left, b.right);
  const U16 cross = Sums::Four(c.left, c.right, a.own, b.own), diagonal = Sums::Four(a.left, b.left, a.right, b.right);
  // The colour of the line, green, and the colour of the lines around, at green sites in even or in odd lanes.
  const bool greenFirst = IsGreen(site);
  const U16 line = greenFirst ? EvenOdd(horizontal, c.own) : EvenOdd(c.own, horizontal);
  const U16 green = greenFirst ? EvenOdd(fifth, cross) : EvenOdd(cross, fifth);
  const U16 other = greenFirst ? EvenOdd(vertical, diagonal) : EvenOdd(diagonal, vertical);
  const bool redInLine = IsInRedRow(site);
  return {redInLine ? line : other, green, redInLine ? other : line};
}

template <class Sums, class Reader>
inline RgbLanes<std::uint16_t> BilinearWordsBy(const Reader& read) {
  return BilinearWordsBy<Sums>(LoadWordColumns(read, 0), LoadWordColumns(read, 1), LoadWordColumns(read, 2),
                               read.in.site);
}

template <class Reader>
inline RgbLanes<std::uint16_t> BilinearWords(const Reader& read) {
  return read.in.mask < 1U << 13 ? BilinearWordsBy<NarrowSums>(read) : BilinearWordsBy<WideSums>(read);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
