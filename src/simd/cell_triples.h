#pragma once

#include "simd/cell_words.h"
#include "simd/interleave.h"
#include "simd/samples.h"

// Cells of 2 x 2 samples of a mosaic, straight to pixels of three samples with the mean of the greens in the middle.
// Channels of their own would have to be parted first, and then interleaved again. One row of a cell has its color in
// the even column, and the other one in the odd column; the other samples are green.
#define LM_HAS_CELL_TRIPLES (LM_BYTE_SHUFFLE == 64 || LM_LANES == 32)
#if LM_HAS_CELL_TRIPLES
namespace LmImagingLib::LM_ISA {
namespace {

/// The rows of cells, as lines of a reader.
template <class Reader>
struct CellRows {
  const Reader& read;
  std::size_t even;  ///< the line that has its color in even columns
  std::size_t odd;
};

/// Whether pixels can be stored there: bytes of words are stored in pieces by registers of 32 bytes, through the
/// caches.
template <class Sample, std::size_t kSampleBytes, class To>
inline constexpr bool kStoresTriples = LM_LANES == 64 || sizeof(Sample) == kSampleBytes
                                       || std::is_same_v<To, std::uint8_t*>;

#if LM_LANES == 64

/// Samples of `kSampleBytes` bytes in memory.
template <class Sample, std::size_t kSampleBytes>
class CellTriples {
 public:
  using V = Lanes<Sample>;

  /// Stores a block of pixels after `change` was applied to their samples.
  template <bool kEvenFirst, class Reader, class Change, class To>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& change, To to) {
    V even[2], odd[2];
    LoadRow(rows.read, rows.even, even);
    LoadRow(rows.read, rows.odd, odd);
    // Greens of the first half of the cells meet in even lanes, those of the second half in odd ones.
    using Pairs = typename PairsOf<Sample>::Type;
    constexpr std::size_t kBits = 8 * sizeof(Sample);
    const V greens =
        change(EvenOdd(MeanUp(V(Pairs(even[0]) >> kBits), odd[0]), MeanUp(even[1], V(Pairs(odd[1]) << kBits))));
    const V first = change(EvenOdd(even[0], odd[0])), second = change(EvenOdd(even[1], odd[1]));
    StoreThird<kEvenFirst, 0>(first, greens, to);
    StoreThird<kEvenFirst, 1>(Middle(first, second, AllLanes<Sample>{}), greens, to);
    StoreThird<kEvenFirst, 2>(second, greens, to);
  }

 private:
  static constexpr std::size_t kCount = kBlock<Sample>, kHalf = kCount / 2;
  static constexpr bool kNarrows = kSampleBytes > sizeof(Sample);

  // Both registers of a row, whose cells are in the order of `PlaceOf`.
  template <class Reader>
  static void LoadRow(const Reader& read, std::size_t line, V (&row)[2]) {
    if constexpr (kNarrows) {
      // Eight bits of each word from its shift on: four bytes of one register next to four bytes of another.
      const __m512i bits = _mm512_add_epi8(_mm512_set1_epi64(0x3020100030201000),
                                           __m512i(Fill(static_cast<std::uint8_t>(read.in.shift))));
      const auto load = [&](std::size_t k) { return __m512i(read(line, k * kLanes)); };
      for (std::size_t k = 0; k < 2; ++k) {
        row[k] = V(_mm512_mask_multishift_epi64_epi8(_mm512_multishift_epi64_epi8(bits, load(2 * k)),
                                                     0xF0F0F0F0F0F0F0F0, bits, load(2 * k + 1)));
      }
    } else {
      LoadSamples<kSampleBytes>(read, line, 0, 2 * kCount, row);
    }
  }

  // The lane of the first column of a cell of one half.
  static constexpr std::size_t PlaceOf(std::size_t cell) {
    return kNarrows ? cell % 16 / 2 * 8 + cell / 16 * 4 + cell % 2 * 2 : 2 * cell;
  }

  // The second half of the first cells in the places that the first half of the second cells leave free.
  template <std::size_t... kLane>
  static V Middle(V first, V second, std::index_sequence<kLane...>) {
    return __builtin_shufflevector(second, first,
                                   ((kNarrows ? kLane % 8 < 4 : kLane < kHalf) ? kLane : kCount + kLane)...);
  }

  // Where the lanes of a part of the pixels are among colors and greens.
  template <bool kEvenFirst, std::size_t kPart>
  struct Index {
    static constexpr std::size_t At(std::size_t lane) {
      const std::size_t sample = kPart * kCount + lane, cell = sample / 3;
      const std::size_t place = PlaceOf(cell % kHalf);
      if (sample % 3 == 1) return kCount + place + cell / kHalf;
      return place + ((sample % 3 == 0) == kEvenFirst ? 0 : 1);
    }
  };

  template <bool kEvenFirst, std::size_t kPart, class To>
  static void StoreThird(V colors, V greens, To to) {
    const V window[] = {colors, greens};
    Store(Pick<Index<kEvenFirst, kPart>>(window), to + kPart * kLanes);
  }
};

#else

// Three times 16 bytes of pixels are made of 32 bytes of either row: each 16 of the cells that are in 16 bytes from
// this one on.
constexpr std::size_t CellsOf(std::size_t sixteen) { return sixteen / 3 * 32 + sixteen % 3 * 8; }

// The cells of a third of a block, each 16 bytes of them where their pixels go.
template <std::size_t kThird, class Reader, std::size_t... kEight>
inline U8 LoadCells(const Reader& read, std::size_t line, std::index_sequence<kEight...>) {
  const U64 v = U64(read(line, kThird * 16));
  return U8(__builtin_shufflevector(v, v, ((CellsOf(kThird * 2 + kEight / 2) - kThird * 16) / 8 + kEight % 2)...));
}

// Where the bytes of pixels are in a row of their cells, whose color is channel `kColor`: nowhere, if they are the
// other row's color.
template <std::size_t kThird, std::size_t kColor, std::size_t kColorColumn>
struct CellIndex {
  static constexpr std::uint8_t At(std::size_t lane) {
    const std::size_t byte = kThird * kLanes + lane, channel = byte % 3;
    if (channel != 1 && channel != kColor) return kNoByte;
    const std::size_t column = channel == kColor ? kColorColumn : 1 - kColorColumn;
    return static_cast<std::uint8_t>(byte / 3 * 2 - CellsOf(byte / 16) + column);
  }
};

template <class Index, std::size_t... kLane>
inline U8 ShuffleCells(U8 cells, std::index_sequence<kLane...>) {
  return ShuffleUnits(cells, U8{Index::At(kLane)...});
}

// A third of a block: the middle samples of pixels are greens.
template <std::size_t kThird, std::size_t... kLane>
inline U8 WithGreens(U8 colors, U8 greens, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(colors, greens, ((kThird * kLanes + kLane) % 3 == 1 ? kLanes + kLane : kLane)...);
}

template <class Sample, std::size_t kSampleBytes>
struct CellTriples;

/// Bytes.
template <>
struct CellTriples<std::uint8_t, 1> {
  /// Stores a block of pixels.
  template <bool kEvenFirst, class Reader, class Change, class To>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& /*change*/, To to) {
    StoreThird<kEvenFirst, 0>(rows, to);
    StoreThird<kEvenFirst, 1>(rows, to);
    StoreThird<kEvenFirst, 2>(rows, to);
  }

 private:
  template <bool kEvenFirst, std::size_t kThird, class Reader, class To>
  static void StoreThird(const CellRows<Reader>& rows, To to) {
    constexpr std::size_t kEvenColor = kEvenFirst ? 0 : 2;
    const U8 even = Row<CellIndex<kThird, kEvenColor, 0>, kThird>(rows.read, rows.even);
    const U8 odd = Row<CellIndex<kThird, 2 - kEvenColor, 1>, kThird>(rows.read, rows.odd);
    constexpr std::make_index_sequence<kLanes> kAll{};
    Store(WithGreens<kThird>(even | odd, MeanUp(even, odd), kAll), to + kThird * kLanes);
  }

  template <class Index, std::size_t kThird, class Reader>
  static U8 Row(const Reader& read, std::size_t line) {
    const U8 cells = LoadCells<kThird>(read, line, std::make_index_sequence<kLanes / 8>{});
    return ShuffleCells<Index>(cells, std::make_index_sequence<kLanes>{});
  }
};

/// Words that keep their bytes.
template <>
struct CellTriples<std::uint16_t, 2> {
  /// Stores a block of pixels after `change` was applied to their samples.
  template <bool kEvenFirst, class Reader, class Change, class To>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& change, To to) {
    const auto mask = static_cast<std::uint16_t>(rows.read.in.mask);
    const auto even = [&](std::size_t offset) { return U16(rows.read(rows.even, offset)); };
    const auto odd = [&](std::size_t offset) { return U16(rows.read(rows.odd, offset)); };
    const auto colors = [&](U16 words) { return change(Change::kClears ? words : words & mask); };
    const U16 secondEven = Pinned(even(kLanes)), firstOdd = Pinned(odd(0));
    const U16 evenGreens = EvenOdd(even(2), secondEven) & mask, oddGreens = EvenOdd(firstOdd, odd(kLanes - 2)) & mask;
    StoreWordCells<kEvenFirst>({{colors(EvenOdd(even(0), firstOdd)), colors(EvenOdd(secondEven, odd(kLanes)))},
                                change(MeanUp(evenGreens, oddGreens))},
                               to);
  }
};

// Where 12 bytes of pixels are taken from, among cells of four bytes. In the second half of a register, the last eight
// come first, and the first four are the last of 16.
template <std::size_t kFirst, std::size_t kGreen, std::size_t kLast>
constexpr std::uint8_t TripleIndex(std::size_t lane) {
  const std::size_t at = lane < 16 ? lane : (lane + 4) % 16;
  if (at >= 12) return kNoByte;
  const std::size_t place = at % 3 == 0 ? kFirst : at % 3 == 1 ? kGreen : kLast;
  return static_cast<std::uint8_t>(at / 3 * 4 + place);
}
template <std::size_t kFirst, std::size_t kGreen, std::size_t kLast, std::size_t... kLane>
inline U8 Triples(U8 cells, std::index_sequence<kLane...>) {
  return ShuffleUnits(cells, U8{TripleIndex<kFirst, kGreen, kLast>(kLane)...});
}

/// Words that become bytes.
template <>
struct CellTriples<std::uint8_t, 2> {
  template <bool kEvenFirst, class Reader, class Change>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& /*change*/, std::uint8_t* to) {
    constexpr std::make_index_sequence<kLanes> kAll{};
    const std::uint32_t shift = rows.read.in.shift;
    const auto factor = static_cast<std::uint16_t>(0x100U >> shift);
    constexpr std::size_t kFirst = kEvenFirst ? 1 : 2;
    for (std::size_t k = 0; k < 4; ++k) {
      // Of each word, one byte is that of its sample: the lower one in odd rows, the upper one in even rows.
      const U8 odd = U8(U16(rows.read(rows.odd, k * kLanes)) >> static_cast<std::uint16_t>(shift));
      const U8 even = U8(U16(rows.read(rows.even, k * kLanes)) * factor);
      const U8 cells = EvenOdd(odd, even);
      // Greens of both rows; the mean of a color and itself is the color.
      StoreTwelvesInTurn(
          MeanUp(Triples<kFirst, 0, 3 - kFirst>(cells, kAll), Triples<kFirst, 3, 3 - kFirst>(cells, kAll)),
          to + 24 * k);
    }
  }
};

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
