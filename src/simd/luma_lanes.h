#pragma once

#include "simd/interleave.h"
#include "simd/wide_stores.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// (77 r + 150 g + 29 b + 128) >> 8 of bytes, as words in two parts whose order only `ClampJoin` knows. Products are of
/// signed bytes, so 128 is subtracted from each. The weights sum to 256: the sum is 32768 too small then, and fits
/// signed words.
struct LumaWords {
  explicit LumaWords(const RgbLanes<std::uint8_t>& in) {
    const U8 r = in.r ^ 0x80, g = in.g ^ 0x80, b = in.b ^ 0x80, one = Fill(1);
    low = Luma(ZipHalves<0>(r, g), ZipHalves<0>(b, one));
    high = Luma(ZipHalves<1>(r, g), ZipHalves<1>(b, one));
  }

  U16 low, high;

 private:
  static U16 Luma(U8 redGreen, U8 blueOne) {
    return (U16(MultiplyAddBytes<77, 150>(redGreen) + MultiplyAddBytes<29, 128>(blueOne)) ^ 0x8000) >> 8;
  }
};

inline U8 LumaLanes(const RgbLanes<std::uint8_t>& in) {
  const LumaWords luma(in);
  return ClampJoin(I16(luma.low), I16(luma.high));
}

// Register `kPart` of both parts in order.
template <std::size_t kPart, std::size_t... kLane>
inline U16 InOrder(const LumaWords& luma, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane), kFirst = kPart * kCount;
  return __builtin_shufflevector(luma.low, luma.high,
                                 ((kFirst + kLane) / 16 * 8 + kLane % 8 + (kFirst + kLane) % 16 / 8 * kCount)...);
}

/// The same of words. Products are of signed words, so 32768 is subtracted from each. The weights sum to 256: the luma
/// is 32768 too small then, and fits signed words.
inline U16 LumaLanes(const RgbLanes<std::uint16_t>& in) {
  const I16 r = I16(in.r ^ 0x8000), g = I16(in.g ^ 0x8000), b = I16(in.b ^ 0x8000), one = I16{} + 1;
  const I16 redGreen = I16(U32{} + (77 | 150 << 16)), blueOne = I16(U32{} + (29 | 128 << 16));
  const I32 low = MultiplyAdd(ZipHalves<0>(r, g), redGreen) + MultiplyAdd(ZipHalves<0>(b, one), blueOne);
  const I32 high = MultiplyAdd(ZipHalves<1>(r, g), redGreen) + MultiplyAdd(ZipHalves<1>(b, one), blueOne);
  return U16(ClampPack(low >> 8, high >> 8)) ^ 0x8000;
}

inline void StoreLumaWords(const RgbLanes<std::uint16_t>& in, std::uint8_t* to, const FitLanes& fit) {
  Store(U8(fit(LumaLanes(in))), to);
}
inline void StoreLumaWords(const RgbLanes<std::uint8_t>& in, std::uint8_t* to, const FitLanes& fit) {
  constexpr std::make_index_sequence<kLanes / 2> kAll{};
  const LumaWords luma(in);
  Store(U8(fit(InOrder<0>(luma, kAll))), to);
  Store(U8(fit(InOrder<1>(luma, kAll))), to + kLanes);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
