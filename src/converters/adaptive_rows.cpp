#include "converters/adaptive_rows.h"

#include <algorithm>

#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(ChangesKernel, AdaptiveChanges)
LM_DECLARE_KERNEL(WeightsKernel, AdaptiveWeights)
LM_DECLARE_WIDE_KERNEL(DifferencesKernel, AdaptiveDifferences)
LM_DECLARE_WIDE_KERNEL(AdaptiveKernel, BayerAdaptive)

namespace {

// A line reads the differences of the rows from 3 above to 3 below, those the sums of five rows of changes around.
constexpr std::int64_t kDifferenceReach = 3, kSumReach = 2;
// Pairs of columns on either side of a row for which changes are made, and differences, for 3 columns of them are read,
// and 2 more of changes. So many begin a register.
constexpr std::size_t kPairsBefore = 16;

// The slot of a row, which may be above the image, in a ring.
template <std::int64_t kCount>
std::size_t SlotOf(std::int64_t row) {
  return static_cast<std::size_t>((row % kCount + kCount) % kCount);
}

// The rows from as many pairs of columns further left on.
template <class Value>
PartedRows<Value> WithMargin(PartedRows<Value> rows) {
  for (const Value*& row : rows.row) {
    if (row != nullptr) row -= kPairsBefore;
  }
  return rows;
}

}  // namespace

template <class Sample>
AdaptiveRows<Sample>::AdaptiveRows(PartedRowWindow<Sample>& rows, std::uint32_t first)
    : mRows(rows),
      mPairs((rows.Shape().width + 1) / 2),
      mNextChanges(std::int64_t{first} - kDifferenceReach - kSumReach),
      mNextDifferences(std::int64_t{first} - kDifferenceReach),
      mChanges(rows.Shape().width, 4 * (kSummedRows + 1)),
      mWeights(rows.Shape().width, 1),
      mDifferences(rows.Shape().width, kDifferenceRows) {}

template <class Sample>
void AdaptiveRows<Sample>::Make(std::uint32_t line, const RowColors<Sample>& out) {
  const Around differences = DifferencesAround(line);
  kBayerAdaptive.template Of<Sample>().Active()(mRows.Around(line, 0), differences.row, mPairs, out);
}

template <class Sample>
void AdaptiveRows<Sample>::MakePixels(std::uint32_t line, RowPixelsKernel* make, std::size_t first, std::size_t end,
                                      const TargetLine& target) {
  if constexpr (sizeof(Sample) == 1) {
    const Around differences = DifferencesAround(line);
    make(mRows.Around(line, 0), differences.row, first, end, target);
  }
}

template <class Sample>
typename AdaptiveRows<Sample>::Around AdaptiveRows<Sample>::DifferencesAround(std::uint32_t line) {
  while (mNextDifferences <= std::int64_t{line} + kDifferenceReach) MakeDifferences(mNextDifferences++);
  Around around;
  for (std::int64_t k = 0; k < 7; ++k) around.row[k] = mDifferences.At(SlotOf<kDifferenceRows>(line + k - 3));
  return around;
}

template <class Sample>
void AdaptiveRows<Sample>::MakeDifferences(std::int64_t row) {
  while (mNextChanges <= row + kSumReach) MakeChanges(mNextChanges++);
  const PartedRows<Value> rows = mRows.Around(row, 3);
  const std::size_t pairs = mPairs + 2 * kPairsBefore;
  std::int16_t* const sums = mChanges.At(4 * kSummedRows) - kPairsBefore;
  std::int16_t* const weights = mWeights.At(0) - kPairsBefore;
  kAdaptiveWeights.Active()(sums, static_cast<std::ptrdiff_t>(mChanges.Stride()), rows.color, pairs, weights);
  kAdaptiveDifferences.template Of<Sample>().Active()(WithMargin(rows), weights, pairs,
                                                      mDifferences.At(SlotOf<kDifferenceRows>(row)) - kPairsBefore);
}

template <class Sample>
void AdaptiveRows<Sample>::MakeChanges(std::int64_t row) {
  kAdaptiveChanges.Active()(
      WithMargin(mRows.CoarseAround(row, 3)), mPairs + 2 * kPairsBefore, std::min(mRows.Shape().depth, 12U) - 8,
      mChanges.At(4 * SlotOf<kSummedRows>(row)) - kPairsBefore, mChanges.At(4 * kSummedRows) - kPairsBefore);
}

template class AdaptiveRows<std::uint8_t>;
template class AdaptiveRows<std::uint16_t>;

}  // namespace LmImagingLib
