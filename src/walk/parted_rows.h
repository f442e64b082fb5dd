#pragma once

#include <memory>
#include <vector>

#include "simd/mosaic.h"
#include "walk/mirrored.h"
#include "walk/row_window.h"
#include "walk/strips.h"

namespace LmImagingLib {

/// Half rows of numbers in one piece of memory, which begins as zeros. Each has a margin on both sides, and its first
/// column begins a cache line: stores that cross two take twice as long.
template <class Value>
class HalfRows {
 public:
  /// @param width  columns of a whole row
  HalfRows(std::size_t width, std::size_t count)
      : mStride((width + 1) / 2 / kRowMargin * kRowMargin + 3 * kRowMargin),
        mValues(mStride * count + kCacheLine / sizeof(Value)) {
    void* first = mValues.data();
    std::size_t space = mValues.size() * sizeof(Value);
    mFirst = static_cast<Value*>(std::align(kCacheLine, mStride * count * sizeof(Value), first, space));
  }
  HalfRows(const HalfRows&) = delete;
  HalfRows& operator=(const HalfRows&) = delete;

  /// From a half row to the next.
  std::size_t Stride() const { return mStride; }
  /// The first column of a half row.
  Value* At(std::size_t index) { return mFirst + index * mStride + kRowMargin; }

 private:
  const std::size_t mStride;
  std::vector<Value> mValues;
  Value* mFirst;
};

/// What there is to know of a mosaic beside its samples.
struct MosaicShape {
  std::uint32_t width, height;  ///< at least 2
  Site site;                    ///< of even lines and columns
  std::uint32_t depth;          ///< significant bits of a sample

  /// The site of a row at even columns.
  Site SiteOf(std::int64_t row) const { return Below(site, row); }
};

inline constexpr std::uint32_t kNotCoarse = ~0U;

/// The rows of a mosaic around the lines that are being converted, parted into even and odd columns, and mirrored on
/// all sides. As many rows are kept as a method reads around a line.
template <class Sample>
class PartedRowWindow {
 public:
  using Value = Number<Sample>;

  /// @param rows  to take rows from, which is asked from row `first` on
  /// @param coarseShift  how far words are shifted right to be coarse; `kNotCoarse` where nobody asks for them
  /// @param reach  rows above and below a line that are read
  PartedRowWindow(RowWindow<Sample>& rows, const MosaicShape& shape, std::uint32_t first, std::uint32_t reach,
                  std::uint32_t coarseShift);

  const MosaicShape& Shape() const { return mShape; }

  /// The rows from `reach` above to `reach` below one, which may all be outside of the image.
  PartedRows<Value> Around(std::int64_t row, std::int64_t reach);
  /// The same of coarse samples, which have 16 bits with their sign.
  PartedRows<std::int16_t> CoarseAround(std::int64_t row, std::int64_t reach);

 private:
  template <class Any>
  PartedRows<Any> RowsAround(std::int64_t row, std::int64_t reach, HalfRows<Any>& from);
  void Part(std::uint32_t row);

  RowWindow<Sample>& mRows;
  const MosaicShape mShape;
  std::uint32_t mNext;  // the row after the last one that is there
  const std::uint32_t mCoarseShift;
  const std::uint32_t mKept;  // rows, a power of two
  HalfRows<Value> mValues;
  HalfRows<std::int16_t> mCoarse;  // of bytes none, which are coarse as they are
};

}  // namespace LmImagingLib
