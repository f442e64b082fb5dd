#pragma once

#include "simd/loops.h"

// The bilinear method for samples of bytes, whose sums are computed in words: pixels in even columns in one register,
// those in odd columns in another. All pixels of a register are of one kind of site and need the same.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// The samples of a row as words, or sums of two rows: those at the even and at the odd columns of the block, which
/// begins one column left of its first pixel, and those two columns further on.
struct ByteSamples {
  U16 even, odd, nextEven, nextOdd;
};

inline ByteSamples operator+(const ByteSamples& a, const ByteSamples& b) {
  return {a.even + b.even, a.odd + b.odd, a.nextEven + b.nextEven, a.nextOdd + b.nextOdd};
}

template <class Reader>
inline ByteSamples LoadByteRow(const Reader& read, std::size_t row) {
  const U16 here = U16(Pinned(read(row, 0)));
  const U16 next = U16(Pinned(read(row, 2)));
  return {here & 0xFF, here >> 8, next & 0xFF, next >> 8};
}

/// The pixels of a line. Those in even lanes are at odd columns of the samples, between the even ones.
struct BilinearPixels {
  ByteSamples own, around;  ///< of the line, and sums of the lines above and below
  Site site;

  template <class Halves>
  ByteColumns Made() const {
    Colors even, odd;
    if (IsGreen(site)) {
      even = {(own.even + own.nextEven) >> 1, Fifth<Halves::kEvenGreen>(own.odd + around.even + around.nextEven),
              around.odd >> 1};
      odd = {Shifted<Halves::kOddColors, 0>(own.nextEven),
             Shifted<Halves::kOddGreen, 2>(own.odd + own.nextOdd + around.nextEven),
             Shifted<Halves::kOddColors, 2>(around.odd + around.nextOdd)};
    } else {
      even = {own.odd, Shifted<Halves::kEvenGreen, 2>(own.even + own.nextEven + around.odd),
              (around.even + around.nextEven) >> 2};
      odd = {Shifted<Halves::kOddColors, 1>(own.odd + own.nextOdd),
             Fifth<Halves::kOddGreen>(own.nextEven + around.odd + around.nextOdd),
             Shifted<Halves::kOddColors, 1>(around.nextEven)};
    }
    const bool redInLine = IsInRedRow(site);
    const auto ordered = [redInLine](const Colors& in) {
      return RgbLanes<std::uint16_t>{redInLine ? in.line : in.other, in.green, redInLine ? in.other : in.line};
    };
    return {ordered(even), ordered(odd)};
  }

 private:
  // The colour that shares the line with green, and that of the lines around it.
  struct Colors {
    U16 line, green, other;
  };

  // A sum of 8 + kBits bits, shifted right, in the lower or in the upper half of a word.
  template <bool kUpper, int kBits>
  static U16 Shifted(U16 sum) {
    if constexpr (!kUpper) return sum >> kBits;
    return kBits == 0 ? sum << 8 : (sum << (8 - kBits)) & 0xFF00;
  }

  // A fifth of a sum, likewise.
  template <bool kUpper>
  static U16 Fifth(U16 sum) {
    const U16 fifth = MultiplyHigh(sum, 13108);  // 65536ths; exact, as the sum is at most 1275
    return kUpper ? fifth << 8 : fifth;
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
