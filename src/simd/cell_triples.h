#pragma once

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

/// Whether pixels can be stored there: registers of 32 bytes are stored in pieces, through the caches.
template <class To>
inline constexpr bool kStoresTriples = LM_LANES == 64 || std::is_same_v<To, std::uint8_t*>;

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

// Where 12 bytes of pixels are taken from, among 16 bytes of groups of four samples. Turned, the last eight come first,
// and the first four are the last of 16.
template <class Sample, std::size_t kFirst, std::size_t kGreen, std::size_t kLast>
struct TripleIndex {
  static constexpr std::uint8_t At(std::size_t byte, bool turned) {
    const std::size_t at = turned ? (byte + 4) % 16 : byte;
    if (at >= 12) return kNoByte;
    const std::size_t channel = at / sizeof(Sample) % 3;
    const std::size_t place = channel == 0 ? kFirst : channel == 1 ? kGreen : kLast;
    return static_cast<std::uint8_t>((at / sizeof(Sample) / 3 * 4 + place) * sizeof(Sample) + at % sizeof(Sample));
  }
};

// The pixels of both halves of a register.
template <class Index, bool kLowTurned, bool kHighTurned, std::size_t... kLane>
inline U8 Triples(U8 v, std::index_sequence<kLane...>) {
  return ShuffleUnits(v, U8{Index::At(kLane % 16, kLane < 16 ? kLowTurned : kHighTurned)...});
}
template <class Index, bool kLowTurned, bool kHighTurned>
inline U8 Triples(U8 v) {
  return Triples<Index, kLowTurned, kHighTurned>(v, std::make_index_sequence<kLanes>{});
}

// Stores 48 bytes of pixels. A group is a pair of colors and a pair with a mean of greens. Where `kMore`, four more
// bytes are stored, over which others are stored later: that saves two steps.
template <class Index, bool kMore, class Pairs>
inline void StoreTriples(Pairs colors, Pairs greens, std::uint8_t* to) {
  const U8 even = Triples<Index, false, false>(U8(ZipHalves<0>(colors, greens)));
  const U8 odd = Triples<Index, !kMore, !kMore>(U8(ZipHalves<1>(colors, greens)));
  if constexpr (kMore) {
    StoreTwelvesAndMore(even, odd, to);
  } else {
    StoreTwelves(even, odd, to);
  }
}

/// Samples of `kSampleBytes` bytes in memory.
template <class Sample, std::size_t kSampleBytes>
struct CellTriples {
  /// Stores a block of pixels after `change` was applied to their samples.
  template <bool kEvenFirst, class Reader, class Change>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& change, std::uint8_t* to) {
    using V = Lanes<Sample>;
    using Pairs = typename PairsOf<Sample>::Type;
    constexpr std::size_t kFirst = kEvenFirst ? 0 : 1;
    V even[2], odd[2];
    for (std::size_t k = 0; k < 2; ++k) {
      even[k] = Row(rows, rows.even, k * kLanes);
      odd[k] = Row(rows, rows.odd, k * kLanes);
    }
    // A load from a sample further moves greens over those of the other row for less than a shift.
    const V next = Row(rows, rows.even, sizeof(Sample)), before = Row(rows, rows.odd, kLanes - sizeof(Sample));
    StoreTriples<TripleIndex<Sample, kFirst, 2, 1 - kFirst>, sizeof(Sample) == 2>(
        Pairs(change(EvenOdd(even[0], odd[0]))), Pairs(change(MeanUp(next, odd[0]))), to);
    StoreTriples<TripleIndex<Sample, kFirst, 3, 1 - kFirst>, false>(Pairs(change(EvenOdd(even[1], odd[1]))),
                                                                    Pairs(change(MeanUp(even[1], before))), to + 48);
  }

 private:
  template <class Reader>
  static Lanes<Sample> Row(const CellRows<Reader>& rows, std::size_t line, std::size_t offset) {
    const U8 v = rows.read(line, offset);
    if constexpr (sizeof(Sample) == 1) {
      return v;
    } else {
      return U16(v) & static_cast<std::uint16_t>(rows.read.in.mask);
    }
  }
};

/// Words that become bytes.
template <>
struct CellTriples<std::uint8_t, 2> {
  template <bool kEvenFirst, class Reader, class Change>
  static void StoreBlock(const CellRows<Reader>& rows, const Change& /*change*/, std::uint8_t* to) {
    const std::uint32_t shift = rows.read.in.shift;
    const auto factor = static_cast<std::uint16_t>(0x100U >> shift);
    constexpr std::size_t kFirst = kEvenFirst ? 1 : 2;
    for (std::size_t k = 0; k < 4; ++k) {
      // Of each word, one byte is that of its sample: the lower one in odd rows, the upper one in even rows.
      const U8 odd = U8(U16(rows.read(rows.odd, k * kLanes)) >> static_cast<std::uint16_t>(shift));
      const U8 even = U8(U16(rows.read(rows.even, k * kLanes)) * factor);
      const U8 cells = EvenOdd(odd, even);
      // Greens of both rows; the mean of a color and itself is the color.
      StoreTwelvesInTurn(MeanUp(Triples<TripleIndex<std::uint8_t, kFirst, 0, 3 - kFirst>, false, true>(cells),
                                Triples<TripleIndex<std::uint8_t, kFirst, 3, 3 - kFirst>, false, true>(cells)),
                         to + 24 * k);
    }
  }
};

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
