#pragma once

#include "simd/interleave.h"
#include "simd/wide_stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// What luma is made of, in 256ths: the weights of ITU-R BT.601, 0.299, 0.587 and 0.114.
inline constexpr std::uint8_t kGreenWeight = 150, kLumaHalf = 128;
struct LumaWeights {
  std::uint8_t red = 77, blue = 29;
};

#if LM_LANES

/// (77 r + 150 g + 29 b + 128) >> 8 of bytes, as words in two parts whose order only `ClampJoin` knows. Products are of
/// signed bytes, so 128 is subtracted from each. The weights sum to 256: the sum is 32768 too small then, and fits
/// signed words.
class LumaWords {
 public:
  explicit LumaWords(const RgbLanes<std::uint8_t>& in, const LumaWeights& weights = {}) {
    const U8 r = in.r ^ 0x80, g = in.g ^ 0x80, b = in.b ^ 0x80, one = Fill(1);
    low = Luma(ZipHalves<0>(r, g), ZipHalves<0>(b, one), weights);
    high = Luma(ZipHalves<1>(r, g), ZipHalves<1>(b, one), weights);
  }

  U16 low, high;

 private:
  static U16 Luma(U8 redGreen, U8 blueOne, const LumaWeights& weights) {
    return (U16(MultiplyAddBytes(redGreen, weights.red, kGreenWeight) +
                MultiplyAddBytes(blueOne, weights.blue, kLumaHalf)) ^
            0x8000) >>
           8;
  }
};

inline U8 LumaLanes(const RgbLanes<std::uint8_t>& in, const LumaWeights& weights = {}) {
  const LumaWords luma(in, weights);
  return ClampJoin(I16(luma.low), I16(luma.high));
}

/// The same of bytes in the lower halves of words, whose sums fit words without signs.
inline U16 LumaSum(const RgbLanes<std::uint16_t>& in, const LumaWeights& weights, std::uint16_t green) {
  return in.r * weights.red + in.g * green + in.b * weights.blue + kLumaHalf;
}
inline U8 LumaLanes(const ByteColumns& in, const LumaWeights& weights, std::uint16_t green) {
  return U8(LumaSum(in.even, weights, green) >> 8 | (LumaSum(in.odd, weights, green) & 0xFF00));
}

// Register `kPart` of both parts in order.
template <std::size_t kPart, std::size_t... kLane>
inline U16 InOrder(const LumaWords& luma, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane), kFirst = kPart * kCount;
  return __builtin_shufflevector(luma.low, luma.high,
                                 ((kFirst + kLane) / 16 * 8 + kLane % 8 + (kFirst + kLane) % 16 / 8 * kCount)...);
}

// A factor for each of two neighbours.
inline I16 WeightPair(std::uint32_t even, std::uint32_t odd) { return I16(U32{} + (even | odd << 16)); }

/// The same of words. Products are of signed words, so 32768 is subtracted from each. The weights sum to 256: the luma
/// is 32768 too small then, and fits signed words.
inline U16 LumaLanes(const RgbLanes<std::uint16_t>& in, const LumaWeights& weights = {}) {
  const I16 r = I16(in.r ^ 0x8000), g = I16(in.g ^ 0x8000), b = I16(in.b ^ 0x8000), one = I16{} + 1;
  const I16 redGreen = WeightPair(weights.red, kGreenWeight), blueOne = WeightPair(weights.blue, kLumaHalf);
  const I32 low = MultiplyAdd(ZipHalves<0>(r, g), redGreen) + MultiplyAdd(ZipHalves<0>(b, one), blueOne);
  const I32 high = MultiplyAdd(ZipHalves<1>(r, g), redGreen) + MultiplyAdd(ZipHalves<1>(b, one), blueOne);
  return U16(ClampPack(low >> 8, high >> 8)) ^ 0x8000;
}

/// The same of words of at most 15 bits: g + ((77 (r - g) + 29 (b - g) + 128) >> 8), as the weights sum to 256.
inline U16 NarrowLumaLanes(const RgbLanes<std::uint16_t>& in, const LumaWeights& weights) {
  const I16 r = I16(in.r - in.g), b = I16(in.b - in.g), redBlue = WeightPair(weights.red, weights.blue);
  const I32 low = MultiplyAdd(ZipHalves<0>(r, b), redBlue) + std::int32_t{kLumaHalf};
  const I32 high = MultiplyAdd(ZipHalves<1>(r, b), redBlue) + std::int32_t{kLumaHalf};
  return in.g + U16(ClampPack(low >> 8, high >> 8));
}

/// The same of words in lanes of 32 bits: (77 r + 29 b) + (150 g + 128), products of signed words again.
inline U32 LumaOfPixels(const WordPixels& in, const LumaWeights& weights) {
  return U32(MultiplyAdd(I16(in.redBlue ^ 0x80008000), WeightPair(weights.red, weights.blue)) +
             MultiplyAdd(I16(in.green ^ 0x18000), WeightPair(kGreenWeight, kLumaHalf)));
}
inline U16 LumaLanes(const WordColumns& in, const LumaWeights& weights) {
  return EvenOdd(U16(LumaOfPixels(in.even, weights) >> 8), U16(LumaOfPixels(in.odd, weights) << 8)) ^ 0x8000;
}

/// Luma of samples of at most 15 bits in lanes of 32 bits.
inline I32 LumaOfNarrow(const WordPixels& in, const LumaWeights& weights) {
  return (MultiplyAdd(I16(in.redBlue), WeightPair(weights.red, weights.blue)) +
          MultiplyAdd(I16(in.green), WeightPair(kGreenWeight, 0)) + std::int32_t{kLumaHalf}) >>
         8;
}

template <class To>
inline void StoreLumaWords(const RgbLanes<std::uint16_t>& in, To to, const FitLanes& fit) {
  Store(fit(LumaLanes(in)), to);
}
template <class To>
inline void StoreLumaWords(const RgbLanes<std::uint8_t>& in, To to, const FitLanes& fit,
                           const LumaWeights& weights = {}) {
  constexpr std::make_index_sequence<kLanes / 2> kAll{};
  const LumaWords luma(in, weights);
  Store(fit(InOrder<0>(luma, kAll)), to);
  Store(fit(InOrder<1>(luma, kAll)), to + kLanes);
}

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
