#pragma once

#include "simd/interleave.h"

// Cells of 2 x 2 words of a mosaic to pixels of three words, where a shuffle moves 16 bytes. Colors and greens are
// taken out of both rows by blends, which cost less than shuffles of either row would.
#if LM_LANES == 32
namespace LmImagingLib::LM_ISA {
namespace {

/// Sixteen cells. The pixels of eight cells are three times 16 bytes. The first and the last 16 are made of the first
/// and the last four cells, which are in the same half of a register; the middle 16 are made of the four in between.
struct WordCells {
  U16 colors[2];  ///< of each eight cells, those of even and of odd columns in turn
  U16 greens;     ///< of the first and of the second eight cells in turn
};

// A byte of the pixels. Its channel is 1 if it is green.
struct PixelByte {
  constexpr explicit PixelByte(std::size_t at) : pixel(at / 6), channel(at / 2 % 3), byte(at % 2) {}

  // Where it is among the cells of some bytes: nowhere, if these are greens and it is not, or the reverse.
  template <bool kEvenFirst, bool kGreens>
  constexpr std::uint8_t In(std::size_t cells, std::size_t from) const {
    if ((channel == 1) != kGreens) return kNoByte;
    const std::size_t word = kGreens ? pixel / 8 : (channel == 0) == kEvenFirst ? 0 : 1;
    return static_cast<std::uint8_t>(pixel % cells * 4 + (kGreens ? 0 : from) + word * 2 + byte);
  }

  std::size_t pixel, channel, byte;
};

// The first and the last 16 bytes of the pixels of eight cells.
template <std::size_t kEight, bool kEvenFirst, bool kGreens>
struct OuterIndex {
  static constexpr std::uint8_t At(std::size_t lane) {
    return PixelByte(kEight * 48 + lane / 16 * 32 + lane % 16).In<kEvenFirst, kGreens>(4, 0);
  }
};
// Eight bytes of the middle 16 of either eight cells in turn. Two colors of either are in 16 bytes.
template <bool kEvenFirst, bool kGreens>
struct MiddleIndex {
  static constexpr std::uint8_t At(std::size_t lane) {
    const std::size_t eight = lane / 8 % 2;
    const PixelByte at(eight * 48 + 16 + lane / 16 * 8 + lane % 8);
    return at.In<kEvenFirst, kGreens>(kGreens ? 4 : 2, eight * 8);
  }
};

template <class Index, std::size_t... kLane>
inline U8 ShuffleWords(U16 words, std::index_sequence<kLane...>) {
  return ShuffleUnits(U8(words), U8{Index::At(kLane)...});
}

/// Stores the pixels of sixteen cells.
template <bool kEvenFirst, class To>
inline void StoreWordCells(const WordCells& cells, To to) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  const auto pixels = [&](U16 colors, auto ofColors, auto ofGreens) {
    return ShuffleWords<decltype(ofColors)>(colors, kAll) | ShuffleWords<decltype(ofGreens)>(cells.greens, kAll);
  };
  const U8 first = pixels(cells.colors[0], OuterIndex<0, kEvenFirst, false>{}, OuterIndex<0, kEvenFirst, true>{});
  const U8 second = pixels(cells.colors[1], OuterIndex<1, kEvenFirst, false>{}, OuterIndex<1, kEvenFirst, true>{});
  // Of doubles, g++ sees that it is one instruction.
  const auto a = Lanes<double>(cells.colors[0]), b = Lanes<double>(cells.colors[1]);
  const U64 inTurn = U64(pixels(U16(__builtin_shufflevector(a, b, 1, 5, 2, 6)), MiddleIndex<kEvenFirst, false>{},
                                MiddleIndex<kEvenFirst, true>{}));
  // The second middle comes first, so that blends bring both to their places.
  const U8 middles = U8(__builtin_shufflevector(inTurn, inTurn, 1, 3, 0, 2));
  Store(Units<0, 3>(first, middles), to);
  Store(Units<1, 2>(first, second), to + kLanes);
  Store(Units<0, 3>(middles, second), to + 2 * kLanes);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
