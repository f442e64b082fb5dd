#pragma once

#include "simd/strip.h"

// The data that callers and kernels exchange about the rows of a mosaic around a pixel. Rows are parted into their even
// and their odd columns: all the samples of a half have one colour, and neighbours come in whole registers.
namespace LmImagingLib {

/// The numbers that samples are computed with: every sum of 8-bit samples fits 16 bits.
template <class Sample>
struct NumberOf {
  using Type = std::int16_t;
};
template <>
struct NumberOf<std::uint16_t> {
  using Type = std::int32_t;
};
template <class Sample>
using Number = typename NumberOf<Sample>::Type;

/// The rows around one, as far as a method reads them: three above to three below.
template <class Value>
struct PartedRows {
  const Value* row[7];      ///< where the even columns of each begin; row[3] is the one itself
  std::ptrdiff_t odd;       ///< from there to the odd columns
  std::ptrdiff_t color;     ///< 0 or 1: the columns of the row that are red or blue
  std::uint32_t white = 0;  ///< the greatest sample
};

/// Where the colours of a row go.
template <class Sample>
struct RowColors {
  Sample* line;  ///< the colour that shares the row with green
  Sample* green;
  Sample* column;  ///< the colour of the rows above and below
};

/// Values of every half row that kernels may read and write before its first column and after its last.
inline constexpr std::size_t kRowMargin = 64;
/// The columns around a row that are mirrored.
inline constexpr std::size_t kMirroredColumns = 8;

/// Parts `width` samples of a row. The address may be any.
/// @param ahead  how many bytes ahead to fetch the row into the cache; 0 leaves it to the processor
template <class Sample>
using PartRowKernel = void(const std::uint8_t* row, std::size_t width, std::uint32_t ahead, Number<Sample>* even,
                           Number<Sample>* odd);

/// Shifts `count` numbers right.
using CoarsenKernel = void(const std::int32_t* numbers, std::size_t count, std::uint32_t shift, std::int16_t* coarse);

/// Makes the colours of `pairs` pairs of columns with the five rows around by linear filters.
template <class Sample>
using GradientCorrectedKernel = void(const PartedRows<Number<Sample>>& in, std::size_t pairs,
                                     const RowColors<Sample>& out);

/// Makes the changes of the second derivatives along the row and along the columns. They replace those of the row five
/// above in `changes`, and in `sums`, which are of five rows. Both have four parts at distances of `in.odd`: even and
/// odd columns along the row, and the same along the columns.
using ChangesKernel = void(const PartedRows<std::int16_t>& in, std::size_t pairs, std::uint32_t shift,
                           std::int16_t* changes, std::int16_t* sums);

/// Makes the weights of the columns, in quarters: 0 or 4 where the changes of one direction are clearly less.
using WeightsKernel = void(const std::int16_t* sums, std::ptrdiff_t odd, std::ptrdiff_t color, std::size_t pairs,
                           std::int16_t* weights);

/// Makes the differences of colour and green at the red or blue pixels of a row.
template <class Sample>
using DifferencesKernel = void(const PartedRows<Number<Sample>>& in, const std::int16_t* weights, std::size_t pairs,
                               Number<Sample>* differences);

/// Makes the colours of `pairs` pairs of columns from a row and the differences of the rows around.
template <class Sample>
using AdaptiveKernel = void(const PartedRows<Number<Sample>>& in, const Number<Sample>* const* differences,
                            std::size_t pairs, const RowColors<Sample>& out);

/// Makes the pixels of a row from `first`, an even number, to `end` by either method, and stores them. The writer's red
/// is the colour of the line.
/// @param differences  as of the adaptive method; of the other null
using RowPixelsKernel = void(const PartedRows<std::int16_t>& in, const std::int16_t* const* differences,
                             std::size_t first, std::size_t end, const TargetLine& target);

/// A table of bytes for samples of at most 12 bits that rises slowly, in pieces that registers hold: of 4 samples below
/// 1024, and of 16 above, which have two rises at most.
struct SampleParts {
  static constexpr std::size_t kBright = 256;  ///< where the pieces of 16 samples from 0 on begin

  alignas(64) std::uint8_t window[64];  ///< the results of 64 samples that may rise fast
  std::uint8_t least[512];  ///< of a piece; of 16 samples less one for each rise that it has not, modulo 256
  /// How much more the others of 4 samples are, in 2, 3 and 3 bits from the lowest one on. Of 16 samples two nibbles:
  /// those from which on it is one more; 0 for no rise.
  std::uint8_t rises[512];
  std::uint8_t windowPiece;  ///< the piece of 4 that the window begins with
};

/// What the samples of one colour of a mosaic are looked up in.
struct SampleTable {
  const std::uint16_t* words;  ///< the result of each sample
  const std::uint8_t* bytes;   ///< the same as bytes; null where results have more than 8 bits
  const SampleParts* parts;    ///< equal to these bytes; null where they rise too fast, or samples have other bits
  Gain gain;                   ///< equal to the table of samples of bytes
  WideGain wideGain;           ///< of samples of words; results of 8 bits are the upper ones of its clamped products
};

/// The tables of a mosaic.
struct MosaicLookup {
  SampleTable red, green, blue;
  bool areGains;  ///< whether all of them equal their gains
};

/// The tables of a row of a mosaic.
struct RowTables {
  const SampleTable& even;  ///< of even columns
  const SampleTable& odd;
  bool areGains;
  std::uint32_t ahead = 0;      ///< how many bytes ahead to fetch the row into the cache
  std::uint32_t mask = 0xFFFF;  ///< the bits of a sample in words; others are ignored
};

/// Looks the samples of a row up. The address of the row may be any.
template <class In, class Out>
using LookUpRowKernel = void(const std::uint8_t* row, std::size_t width, const RowTables& tables, Out* out);

/// Corrects the defect pixels of a row, given with those two above and below. Rows begin two samples before the first
/// column and end two after the last one.
/// @param threshold  how far a sample may be outside of the range of the eight around, at most the greatest sample
template <class Sample>
using DefectsKernel = void(const Sample* above, const Sample* row, const Sample* below, std::size_t width,
                           std::uint32_t threshold, Sample* out);

/// The cells of a mosaic that were looked at and are usable, and the sums of their samples by place.
struct CellSums {
  std::uint64_t cells = 0;
  std::uint64_t top[2] = {}, bottom[2] = {};
};

/// Adds every `step`th of `cells` cells that two rows begin with, from the first one on: 1, or 4.
/// @param least  the least sample of a usable cell
/// @param range  how far above it samples may be
using CellSumsKernel = void(const std::uint8_t* top, const std::uint8_t* bottom, std::size_t cells, std::size_t step,
                            std::uint32_t least, std::uint32_t range, CellSums& sums);

}  // namespace LmImagingLib
