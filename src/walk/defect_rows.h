#pragma once

#include <cstdint>
#include <vector>

#include "simd/kernel.h"
#include "simd/mosaic.h"
#include "walk/mirrored.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(DefectsKernel, CorrectDefects)

/// The rows of a mosaic without its defect pixels. The image is mirrored about its edge pixels.
template <class Sample>
class DefectRows {
 public:
  /// @param width, height  of the image, at least 2
  /// @param spare  samples that `decode` may write after a row
  DefectRows(std::uint32_t width, std::uint32_t height, std::uint32_t threshold, std::size_t spare)
      : mWidth(width),
        mHeight(height),
        mThreshold(threshold),
        mStride(std::size_t{width} + 2 * kMargin + spare),
        mSamples(kRows * mStride) {}

  /// Corrects a row. Rows are best asked for from top to bottom.
  /// @param decode  decode(row, to) writes the samples of a row
  template <class Decode>
  void Correct(std::uint32_t row, const Decode& decode, Sample* out) {
    const Sample* const above = Row(Mirrored(std::int64_t{row} - 2, mHeight), decode);
    const Sample* const own = Row(row, decode);
    const Sample* const below = Row(Mirrored(std::int64_t{row} + 2, mHeight), decode);
    kCorrectDefects.template Of<Sample>().Active()(above, own, below, mWidth, mThreshold, out);
  }

 private:
  static constexpr std::uint32_t kRows = 8;  // a power of two, more than two above to two below
  static constexpr std::uint32_t kMargin = 2;

  template <class Decode>
  const Sample* Row(std::uint32_t row, const Decode& decode) {
    const std::uint32_t slot = row % kRows;
    Sample* const begin = mSamples.data() + slot * mStride;
    if (mHeld[slot] != std::uint64_t{row} + 1) {
      Sample* const samples = begin + kMargin;
      decode(row, samples);
      for (std::uint32_t k = 1; k <= kMargin; ++k) {
        samples[-static_cast<std::ptrdiff_t>(k)] = samples[Mirrored(-std::int64_t{k}, mWidth)];
        samples[mWidth + k - 1] = samples[Mirrored(std::int64_t{mWidth} + k - 1, mWidth)];
      }
      mHeld[slot] = std::uint64_t{row} + 1;
    }
    return begin;
  }

  const std::uint32_t mWidth, mHeight, mThreshold;
  const std::size_t mStride;
  std::vector<Sample> mSamples;
  std::uint64_t mHeld[kRows] = {};  // the rows that are there, counted from 1
};

}  // namespace LmImagingLib
