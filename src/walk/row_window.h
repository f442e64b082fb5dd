#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "formats/source_type.h"
#include "simd/strip.h"
#include "walk/defect_rows.h"
#include "walk/lines.h"

namespace LmImagingLib {

/// The bytes of a line that are read to fill a row of `width` samples.
std::size_t RowBytesRead(const SourceType& source, std::uint32_t width);

/// The tables that the samples of a mosaic are looked up in, each in that of its colour. Of words that are to become
/// bytes the results have 8 bits.
struct RowLookup {
  const MosaicLookup* tables = nullptr;  ///< null where nothing is looked up
  Site site = {};                        ///< of even lines and columns
  bool correctsDefects = false;          ///< whether defect pixels are corrected before
  std::uint32_t defectThreshold = 0;     ///< how far they are outside of the range of their neighbours
};

/// The rows of a mosaic around the lines that are being converted, as samples: a ring of rows, found by their numbers.
///
/// Rows that are samples already are not copied: the window then points into the source. So it does at words of any
/// bits, if its user has kernels that shift and mask them. Samples that a layout leaves out, and lines that belong to
/// no field, are 0.
template <class Sample>
class RowWindow {
 public:
  /// @param frame  must outlive the window
  /// @param width  samples of a row that are needed, from its beginning; of a readout by taps all of them
  /// @param rows  rows that are needed at the same time
  /// @param end  the row after the last one that may be read
  /// @param takesWords  whether words of the source may stay as they are
  /// Throws `std::bad_alloc`.
  RowWindow(const SourceType& source, const Frame& frame, std::uint32_t width, std::uint32_t rows, std::uint32_t end,
            const RowLookup& lookup = {}, bool takesWords = false);

  /// The samples of a row. Rows are asked for from top to bottom; one is valid until so many later ones were asked for
  /// as are needed at the same time.
  const std::uint8_t* Row(std::uint32_t row) {
    if (mIsSource) return SourceLineAt(mFrame, row);
    if (row >= mDecoded) Decode(row);
    return reinterpret_cast<const std::uint8_t*>(mFirst + (row & mRowMask) * mStride);
  }

  /// Whether rows are in the source.
  bool IsSource() const { return mIsSource; }

  /// How many bytes ahead those that read rows have to fetch them: 0 if they are not in the source.
  std::uint32_t FetchAhead() const { return mIsSource ? mFrame.fetchAhead : 0; }

  /// The bytes of a sample in a row: those of `Sample`, or 2 where words of the source stay as they are.
  std::size_t SampleBytes() const { return mIsSource ? mSource.format->groupBits / 8 : sizeof(Sample); }

 private:
  void Decode(std::uint32_t row);
  bool DecodeJoined(std::uint32_t row, std::uint32_t count);
  void LookUpRow(std::uint32_t line, Sample* row);
  template <class Decoded>
  void LookUpDecoded(std::uint32_t line, DefectRows<Decoded>* defects, Sample* row);
  template <class Decoded>
  void DecodeRow(std::uint32_t line, Decoded* row) const;
  template <class Decoded>
  void DecodeTaps(const std::uint8_t* source, Decoded* row) const;

  static constexpr std::size_t kInsideBytes = 8192;

  const SourceType& mSource;
  const Frame& mFrame;
  const std::uint32_t mWidth;
  const std::uint32_t mRows;
  const std::uint32_t mEnd;
  const RowLookup mLookup;
  const bool mIsSource;
  std::uint32_t mRowMask = 0;  // of the rows that the ring has room for, a power of two
  std::uint32_t mDecoded = 0;  // the row after the last one in the ring
  std::size_t mStride = 0;     // samples from a row to the next
  std::unique_ptr<std::uint8_t[]> mOutside;
  std::vector<std::uint16_t> mDecodedRow;  // before it is looked up, of bytes or words
  std::optional<DefectRows<std::uint8_t>> mDefectBytes;
  std::optional<DefectRows<std::uint16_t>> mDefectWords;
  Sample* mFirst = nullptr;
  alignas(64) std::uint8_t mInside[kInsideBytes];
};

}  // namespace LmImagingLib
