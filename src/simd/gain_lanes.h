#pragma once

#include "simd/lanes.h"

// A filter's tables as multiplications.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Whether a product is faster than a table of bytes, which takes sixteen shuffles where they are narrow.
inline constexpr bool kGainsAreFaster = LM_BYTE_SHUFFLE < 64;

/// A table of bytes that is a gain.
class GainLanes {
 public:
  explicit GainLanes(const ChannelTable<std::uint8_t>& table)
      : mFactor(table.gain.factor), mDown(static_cast<std::uint16_t>(8 - table.gain.shift)) {}

  U8 operator[](U8 index) const {
    return ClampJoin(I16(MultiplyHigh(LowWords(index) >> mDown, mFactor)),
                     I16(MultiplyHigh(HighWords(index) >> mDown, mFactor)));
  }

 private:
  std::uint16_t mFactor, mDown;
};

/// One number in even lanes, another one in odd lanes.
inline U16 InEvenAndOdd(std::uint16_t even, std::uint16_t odd) {
  return U16(U32{} + (static_cast<std::uint32_t>(odd) << 16 | even));
}

/// The products of words and gains, of 16 and 32 bits, of which the upper 16 are kept. Bits above those of a sample
/// change nothing.
/// @tparam kOf16Bits  whether samples have 16 bits; their products are clamped, too
template <bool kOf16Bits>
class WideProducts {
 public:
  explicit WideProducts(const WideGain& gain) : WideProducts(gain, gain) {}
  /// Gains of their own in even and in odd lanes, for samples of as many bits.
  WideProducts(const WideGain& even, const WideGain& odd)
      : mHigh(
            InEvenAndOdd(static_cast<std::uint16_t>(even.factor >> 16), static_cast<std::uint16_t>(odd.factor >> 16))),
        mLow(InEvenAndOdd(static_cast<std::uint16_t>(even.factor), static_cast<std::uint16_t>(odd.factor))),
        mWhole(InEvenAndOdd(even.whole, odd.whole)),
        mUp(even.up) {}

  U16 operator()(U16 words) const {
    const U16 x = kOf16Bits ? words : words << mUp;
    const U16 low = x * mHigh;
    const U16 sum = low + MultiplyHigh(x, mLow);
    const U16 carry = U16(sum < low);  // a lane in which the comparison holds is -1
    const U16 product = MultiplyHigh(x, mHigh) - carry;
    if constexpr (!kOf16Bits) return product;
    const U16 whole = x * mWhole;
    const U16 all = whole + product;
    return all | U16(all < whole) | U16(MultiplyHigh(x, mWhole) != 0);
  }

 private:
  U16 mHigh, mLow, mWhole;
  std::uint16_t mUp;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
