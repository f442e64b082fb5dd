#pragma once

#include "simd/color_matrix.h"
#include "simd/interleave.h"

// The light of a block of pixels, and its products with the rows of a colour matrix.
//
// Products of words are signed, so registers compute with L - 32768. The sum of the products is 32768 (a + b + c) too
// small then, so that a constant of 32768 (a + b + c) + 2048 is added. Factors whose absolute values sum to 28672 keep
// all of it within 31 bits.
//
// Red and green are neighbours in registers, even and odd pixels apart. Blue stays as it is: its product with a factor
// and 0 is that of even pixels, with 0 and the factor that of odd ones.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

inline constexpr std::size_t kWords = kLanes / 2;

/// Pixels of a block: two registers of light.
inline constexpr std::size_t kBlockPixels = kLanes;

/// Light less 32768, of samples that were widened.
inline I16 SignedLight(U16 u) { return I16((MultiplyHigh(u, u) + (u >> 15)) ^ 0x8000); }

/// The light of half a block: pairs of red and green, of even and of odd pixels, and blue.
struct HalfLight {
  I16 even, odd, blue;
};

// Bytes from `kFirst` on and two further on, each twice: the pairs of every other pixel.
template <std::size_t kFirst, std::size_t... kLane>
inline U16 EveryOther(U8 pairs, std::index_sequence<kLane...>) {
  return U16(__builtin_shufflevector(pairs, pairs, (kLane / 4 * 4 + kFirst + kLane % 4 / 2)...));
}

/// Of bytes, one half of each 16 pixels.
template <std::size_t kHalf>
inline HalfLight LightOf(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                         std::uint32_t /*depth*/) {
  constexpr std::make_index_sequence<kLanes> kAll{};
  const U8 pairs = ZipHalves<kHalf>(Load(red), Load(green)), blues = Load(blue);
  return {SignedLight(EveryOther<0>(pairs, kAll)), SignedLight(EveryOther<2>(pairs, kAll)),
          SignedLight(U16(ZipHalves<kHalf>(blues, blues)))};
}

/// Of words, one register of two.
template <std::size_t kHalf>
inline HalfLight LightOf(const std::uint16_t* red, const std::uint16_t* green, const std::uint16_t* blue,
                         std::uint32_t depth) {
  const auto light = [depth](const std::uint16_t* samples) {
    const U16 words = Load(samples + kHalf * kWords);
    return U16(SignedLight(words << static_cast<std::uint16_t>(16 - depth) |
                           words >> static_cast<std::uint16_t>(2 * depth - 16)));
  };
  const U16 r = light(red), g = light(green);
  return {I16(EvenOdd(r, U16(U32(g) << 16))), I16(EvenOdd(U16(U32(r) >> 16), g)), I16(light(blue))};
}

/// A colour of a block: of both halves.
struct BlockSums {
  I32 even[2], odd[2];
};

class RowLanes {
 public:
  RowLanes(const std::int16_t (&factors)[3], std::int32_t constant)
      : mRedGreen(Pair(factors[0], factors[1])),
        mEvenBlue(Pair(factors[2], 0)),
        mOddBlue(Pair(0, factors[2])),
        mConstant(I32{} + constant) {}

  BlockSums operator()(const HalfLight (&light)[2]) const {
    return {{Sum(light[0].even, light[0].blue, mEvenBlue), Sum(light[1].even, light[1].blue, mEvenBlue)},
            {Sum(light[0].odd, light[0].blue, mOddBlue), Sum(light[1].odd, light[1].blue, mOddBlue)}};
  }

 private:
  static I16 Pair(std::int16_t first, std::int16_t second) {
    return I16(I32{} + static_cast<std::int32_t>(static_cast<std::uint16_t>(first) |
                                                 static_cast<std::uint32_t>(static_cast<std::uint16_t>(second)) << 16));
  }
  I32 Sum(I16 redGreen, I16 blue, I16 factor) const {
    return (MultiplyAdd(redGreen, mRedGreen) + MultiplyAdd(blue, factor) + mConstant) >> 12;
  }

  const I16 mRedGreen, mEvenBlue, mOddBlue;
  const I32 mConstant;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
