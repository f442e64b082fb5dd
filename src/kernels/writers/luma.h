#pragma once

#include "simd/luma_lanes.h"

// Luma as the writer of a conversion without strips, of the pixels of a mosaic.
namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
inline Sample Luma(const Rgb<Sample>& pixel, const LumaWeights& weights = {}) {
  const std::uint32_t sum = std::uint32_t{weights.red} * pixel.r + std::uint32_t{kGreenWeight} * pixel.g +
                            std::uint32_t{weights.blue} * pixel.b + kLumaHalf;
  return static_cast<Sample>(sum >> 8);
}

/// The weights of pixels that are made as if the site were in a red row.
inline LumaWeights WeightsAt(Site site) {
  constexpr LumaWeights kWeights;
  return IsInRedRow(site) ? kWeights : LumaWeights{kWeights.blue, kWeights.red};
}

/// Luma of bytes.
class LumaToBytes {
 public:
  static constexpr std::size_t kBytes = 1;

  LumaToBytes(const TargetLine& /*target*/, Site site) : mWeights(WeightsAt(site)) {}

  void Pixel(const Rgb<std::uint8_t>& pixel, std::uint8_t* to) const { *to = Luma(pixel, mWeights); }

#if LM_LANES
  template <class To>
  void Block(const RgbLanes<std::uint8_t>& in, To to) const {
    Store(LumaLanes(in, mWeights), to);
  }
  template <class To>
  void Block(const GrayLanes<std::uint8_t>& in, To to) const {
    Store(in.gray, to);
  }
  template <class Columns, class To>
  void Block(const PixelColumns<Columns>& in, To to) const {
    Store(LumaLanes(in.columns.template Made<Halves<false, false, false>>(), mWeights, mGreen), to);
  }
#endif

 private:
  const LumaWeights mWeights;
  // Compilers would make a chain of shifts of a product with a constant.
  const std::uint16_t mGreen = Alone(std::uint16_t{kGreenWeight});
};

/// Luma in 16-bit little-endian words, fitted after the sum.
/// @tparam kNarrow  whether samples have 15 bits or fewer
template <class Sample, bool kNarrow>
class LumaToWords {
 public:
  static constexpr std::size_t kBytes = 2;

  LumaToWords(const TargetLine& target, Site site) : mFit(target.fit), mWeights(WeightsAt(site)) {}

  void Pixel(const Rgb<Sample>& pixel, std::uint8_t* to) const {
    const std::uint16_t word = Fitted(Luma(pixel, mWeights), mFit);
    std::memcpy(to, &word, sizeof word);
  }

#if LM_LANES
  template <class To>
  void Block(const RgbLanes<Sample>& in, To to) const {
    if constexpr (sizeof(Sample) == 1) {
      StoreLumaWords(in, to, FitLanes(mFit), mWeights);
    } else {
      Store(FitLanes(mFit)(kNarrow ? NarrowLumaLanes(in, mWeights) : LumaLanes(in, mWeights)), to);
    }
  }
  template <class To>
  void Block(const GrayLanes<std::uint16_t>& in, To to) const {
    Store(in.gray, to);
  }
  template <class Columns, class To>
  void Block(const PixelColumns<Columns>& in, To to) const {
    Block(Merged(in), to);
  }
  template <class To>
  void Block(const WordColumns& in, To to) const {
    Store(FitLanes(mFit)(LumaLanes(in, mWeights)), to);
  }
#endif

 private:
  const Fit mFit;
  const LumaWeights mWeights;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
