#pragma once

#include "simd/loops.h"
#include "simd/word_columns.h"

// The bilinear method for samples of 14 to 16 bits, whose sums are computed in lanes of 32 bits: pixels in even columns
// in one register, those in odd columns in another. All pixels of a register are of one kind of site and need the same.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// The samples of a row that the pixels in even or in odd lanes need, or sums of two rows.
struct WideSamples {
  U32 left, own, right;
};

inline WideSamples operator+(const WideSamples& a, const WideSamples& b) {
  return {a.left + b.left, a.own + b.own, a.right + b.right};
}

struct WideRow {
  WideSamples even, odd;
};

/// Loads a row from the column before the first pixel on.
template <class Reader>
inline WideRow LoadWideRow(const Reader& read, std::size_t row) {
  const U32 first = U32(Pinned(read(row, 0))), next = U32(Pinned(read(row, 4)));
  const U32 own = first >> 16, right = next & 0xFFFF;
  return {{first & 0xFFFF, own, right}, {own, right, next >> 16}};
}

/// A fifth of the sum of five words, truncated. The sum has 19 bits and a float 24, so the product with the float next
/// above a fifth is never below a whole fifth, nor does it reach the next one.
inline U32 Fifth(U32 sum) {
  return U32(__builtin_convertvector(__builtin_convertvector(I32(sum), Lanes<float>) * 0.2F, I32));
}

/// Pixels of one kind of site. Words for the upper halves of lanes are shifted there as they are; `WordPairs` drops the
/// bits below.
inline WordPixels WidePixels(const WideSamples& own, const WideSamples& around, Site site) {
  const U32 horizontal = own.left + own.right, corners = around.left + around.right;
  const bool redInLine = IsInRedRow(site);
  if (IsGreen(site)) {
    return {redInLine ? WordPairs(horizontal >> 1, around.own << 15) : WordPairs(around.own >> 1, horizontal << 15),
            Fifth(own.own + corners)};
  }
  return {redInLine ? WordPairs(own.own, corners << 14) : WordPairs(corners >> 2, own.own << 16),
          (horizontal + around.own) >> 2};
}

inline WordColumns BilinearWide(const WideRow& above, const WideRow& own, const WideRow& below, Site site) {
  return {WidePixels(own.even, above.even + below.even, site),
          WidePixels(own.odd, above.odd + below.odd, RightOf(site))};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
