#pragma once

#include "walk/parted_rows.h"

namespace LmImagingLib {

/// The adaptive method as a sequence of steps from row to row: each keeps as many rows of its results as the next one
/// reads.
template <class Sample>
class AdaptiveRows {
 public:
  /// @param first  the first line to make
  AdaptiveRows(PartedRowWindow<Sample>& rows, std::uint32_t first);

  /// How far samples are shifted right for the choice of a direction.
  static std::uint32_t CoarseShift(std::uint32_t depth) { return depth > 12 ? depth - 12 : 0; }

  /// Makes the colours of a line; lines come one after the other from the first one on.
  void Make(std::uint32_t line, const RowColors<Sample>& out);
  /// Some of them as pixels, by a kernel that stores them. Of bytes only.
  void MakePixels(std::uint32_t line, RowPixelsKernel* make, std::size_t first, std::size_t end,
                  const TargetLine& target);

 private:
  using Value = Number<Sample>;
  /// The differences around a row.
  struct Around {
    const Value* row[7];
  };

  Around DifferencesAround(std::uint32_t line);

  void MakeChanges(std::int64_t row);
  void MakeDifferences(std::int64_t row);

  static constexpr std::int64_t kSummedRows = 5;
  static constexpr std::int64_t kDifferenceRows = 8;

  PartedRowWindow<Sample>& mRows;
  const std::size_t mPairs;         // of columns of a row
  std::int64_t mNextChanges;        // the row after the last one whose changes are in the sums
  std::int64_t mNextDifferences;    // the row after the last one whose differences are there
  HalfRows<std::int16_t> mChanges;  // four halves of each row, and as many sums
  HalfRows<std::int16_t> mWeights;
  HalfRows<Value> mDifferences;
};

}  // namespace LmImagingLib
