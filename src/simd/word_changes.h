#pragma once

#include "simd/gain_lanes.h"
#include "simd/rgb.h"
#include "simd/strip.h"

// What is done to registers of words before they are stored.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Shifts words left. Shifts by a number in a register take two steps where a product takes one.
class ShiftLanes {
 public:
  explicit ShiftLanes(std::uint32_t up) : mFactor(static_cast<std::uint16_t>(1U << up)) {}

  U16 operator()(U16 words) const { return words * mFactor; }

 private:
  std::uint16_t mFactor;
};

/// Shifts words to the depth of the destination.
class FitLanes {
 public:
  explicit FitLanes(const Fit& fit) : mUp(fit.up), mDown(static_cast<std::uint16_t>(fit.down)) {}

  U16 operator()(U16 words) const { return mUp(words) >> mDown; }

 private:
  ShiftLanes mUp;
  std::uint16_t mDown;
};

/// A table of words that is a gain.
/// @tparam kOf16Bits  whether samples have 16 bits
template <bool kOf16Bits>
class WideGainLanes {
 public:
  explicit WideGainLanes(const WideGain& gain, const Fit& fit = {})
      : mProducts(gain), mMost(static_cast<std::uint16_t>(0xFFFFU >> gain.up)), mFit(fit) {}

  U16 operator()(U16 words) const {
    const U16 products = mProducts(words);
    return mFit(kOf16Bits ? products : Least(products, U16{} + mMost));
  }

 private:
  WideProducts<kOf16Bits> mProducts;
  std::uint16_t mMost;
  FitLanes mFit;
};

/// The change of each channel's words before they are stored.
template <class Change>
struct WordChanges {
#if LM_LANES < 64
  // g++ would rather call it from several loops, which takes a fourth longer with gains.
  [[gnu::always_inline]]
#endif
  RgbLanes<std::uint16_t>
  operator()(const RgbLanes<std::uint16_t>& in) const {
    return {red(in.r), green(in.g), blue(in.b)};
  }

  Change red, green, blue;
};

/// Calls `use` with the gains of all channels as changes of words.
template <class Use>
auto ByGains(const LookupTables<std::uint16_t>& tables, const Fit& fit, const Use& use) {
  const WideGain &red = tables.red.gain, &green = tables.green.gain, &blue = tables.blue.gain;
  if (red.up == 0) {
    using Of16Bits = WideGainLanes<true>;
    return use(WordChanges<Of16Bits>{Of16Bits(red, fit), Of16Bits(green, fit), Of16Bits(blue, fit)});
  }
  using Of = WideGainLanes<false>;
  return use(WordChanges<Of>{Of(red, fit), Of(green, fit), Of(blue, fit)});
}

/// Words of each channel from pixel `i` on: a register of each, or `count` words.
inline RgbLanes<std::uint16_t> LoadWords(const Channels<std::uint16_t>& in, std::size_t i) {
  return {Load(in.red + i), Load(in.green + i), Load(in.blue + i)};
}
inline RgbLanes<std::uint16_t> LoadWordsPart(const Channels<std::uint16_t>& in, std::size_t i, std::size_t count) {
  return {LoadPart(in.red + i, count), LoadPart(in.green + i, count), LoadPart(in.blue + i, count)};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
