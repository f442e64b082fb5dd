#include "walk/parted_rows.h"

#include <type_traits>

#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(PartRowKernel, PartRow)
LM_DECLARE_KERNEL(CoarsenKernel, Coarsen)

template <class Sample>
PartedRowWindow<Sample>::PartedRowWindow(RowWindow<Sample>& rows, const MosaicShape& shape, std::uint32_t first,
                                         std::uint32_t reach, std::uint32_t coarseShift)
    : mRows(rows),
      mShape(shape),
      mNext(first),
      mCoarseShift(coarseShift),
      // A step reads 3 rows up and down at most; the last one of several reads those that the first one has read.
      mKept(reach <= 3 ? 8 : 16),
      mValues(shape.width, 2 * mKept),
      mCoarse(shape.width, std::is_same_v<Value, std::int16_t> ? 0 : 2 * mKept) {}

template <class Sample>
PartedRows<Number<Sample>> PartedRowWindow<Sample>::Around(std::int64_t row, std::int64_t reach) {
  return RowsAround(row, reach, mValues);
}

template <class Sample>
PartedRows<std::int16_t> PartedRowWindow<Sample>::CoarseAround(std::int64_t row, std::int64_t reach) {
  if constexpr (std::is_same_v<Value, std::int16_t>) {
    return Around(row, reach);
  } else {
    return RowsAround(row, reach, mCoarse);
  }
}

template <class Sample>
template <class Any>
PartedRows<Any> PartedRowWindow<Sample>::RowsAround(std::int64_t row, std::int64_t reach, HalfRows<Any>& from) {
  PartedRows<Any> around{
      {}, static_cast<std::ptrdiff_t>(from.Stride()), IsGreen(mShape.SiteOf(row)) ? 1 : 0, (1U << mShape.depth) - 1};
  for (std::int64_t by = -reach; by <= reach; ++by) {
    const std::uint32_t at = Mirrored(row + by, mShape.height);
    while (mNext <= at) Part(mNext++);
    around.row[3 + by] = from.At((at & (mKept - 1)) * 2);
  }
  return around;
}

template <class Sample>
void PartedRowWindow<Sample>::Part(std::uint32_t row) {
  const std::size_t index = (row & (mKept - 1)) * 2;
  Value* const even = mValues.At(index);
  Value* const odd = mValues.At(index + 1);
  Value* const columns[] = {even, odd};
  const auto column = [&](std::int64_t x) -> Value& { return columns[x & 1][x >> 1]; };  // x may be negative
  kPartRow.template Of<Sample>().Active()(mRows.Row(row), mShape.width, mRows.FetchAhead(), even, odd);
  for (std::int64_t k = 1; k <= std::int64_t{kMirroredColumns}; ++k) {
    column(-k) = column(Mirrored(-k, mShape.width));
    const std::int64_t right = std::int64_t{mShape.width} - 1 + k;
    column(right) = column(Mirrored(right, mShape.width));
  }
  if constexpr (!std::is_same_v<Value, std::int16_t>) {
    if (mCoarseShift == kNotCoarse) return;
    const std::size_t count = (mShape.width + 1) / 2 + kMirroredColumns;
    for (std::size_t half = 0; half < 2; ++half) {
      const std::size_t before = kMirroredColumns / 2;
      kCoarsen.Active()(mValues.At(index + half) - before, count, mCoarseShift, mCoarse.At(index + half) - before);
    }
  }
}

template class PartedRowWindow<std::uint8_t>;
template class PartedRowWindow<std::uint16_t>;

}  // namespace LmImagingLib
