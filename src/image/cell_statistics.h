#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace LmImagingLib {

/// Sums and histograms of the cells of an image whose samples are neither too dark nor overexposed: of a mosaic 2 x 2
/// samples, else pixels.
class CellStatistics {
 public:
  CellStatistics(unsigned depth, bool histograms)
      : mLeast(White(depth) / 50), mRange(White(depth) - 2 * mLeast), mDepth(depth) {
    if (histograms) mCounts.resize(3 * kBins);
  }

  void Add(std::uint32_t red, std::uint32_t green1, std::uint32_t green2, std::uint32_t blue) {
    // One comparison a sample: those below the least one wrap.
    const auto isOutside = [this](std::uint32_t sample) { return sample - mLeast > mRange; };
    if (isOutside(red) || isOutside(green1) || isOutside(green2) || isOutside(blue)) return;
    ++mUsable;
    mSums[0] += red;
    mSums[1] += green1 + green2;
    mSums[2] += blue;
    if (mCounts.empty()) return;
    ++mCounts[BinOf(red)];
    ++mCounts[kBins + BinOf((green1 + green2) / 2)];
    ++mCounts[2 * kBins + BinOf(blue)];
  }

  /// Adds cells that were added up, those inside of `Least` and `Range`.
  void AddSums(std::uint64_t cells, std::uint64_t red, std::uint64_t greens, std::uint64_t blue) {
    mUsable += cells;
    mSums[0] += red;
    mSums[1] += greens;
    mSums[2] += blue;
  }

  bool HasHistograms() const { return !mCounts.empty(); }
  std::uint32_t Least() const { return mLeast; }
  std::uint32_t Range() const { return mRange; }
  std::size_t Usable() const { return mUsable; }

  double Mean(std::size_t channel) const {
    const auto sum = static_cast<double>(mSums[channel]);
    return sum / static_cast<double>(mUsable) / (channel == 1 ? 2 : 1);
  }

  /// The sample that 99 of 100 cells do not exceed, to the middle of its bin.
  double Percentile(std::size_t channel) const {
    std::size_t above = mUsable / 100;
    std::size_t bin = kBins - 1;
    for (; bin > 0 && mCounts[channel * kBins + bin] <= above; --bin) above -= mCounts[channel * kBins + bin];
    return (static_cast<double>(bin) + 0.5) * (White(mDepth) + 1) / kBins;
  }

  static std::uint32_t White(unsigned depth) { return (1U << depth) - 1; }

 private:
  static constexpr std::size_t kBins = 1024;

  std::size_t BinOf(std::uint32_t sample) const { return sample * std::size_t{kBins} >> mDepth; }

  const std::uint32_t mLeast, mRange;
  const unsigned mDepth;
  std::size_t mUsable = 0;
  std::uint64_t mSums[3] = {};  // of green twice
  std::vector<std::size_t> mCounts;
};

}  // namespace LmImagingLib
