// Colours by a 3 x 3 matrix: square roots of light are squared, multiplied, and looked up in a tone curve.
//
// A sample t of d bits is widened to 16 by repeating its bits, u = t << (16 - d) | t >> (2d - 16). Light is
// L = (u * u >> 16) + (u >> 15), which has black at 0 and white at 65535. A colour of the result is
// R = clamp((a L(red) + b L(green) + c L(blue) + 2048) >> 12) to 0..65535, with factors in 4096ths.
//
// Products of words are signed, so registers compute with L - 32768. The sum of the products is 32768 (a + b + c) too
// small then, and as R is clamped as R - 32768, a constant of 32768 (a + b + c - 4096) + 2048 is added. Factors whose
// absolute values sum to 28672 keep all of it within 31 bits.
#include "simd/color_matrix.h"
#include "simd/joined.h"
#include "simd/lanes.h"

namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint32_t LightOf(std::uint32_t sample, std::uint32_t depth) {
  const std::uint32_t u = sample << (16 - depth) | sample >> (2 * depth - 16);
  return (u * u >> 16) + (u >> 15);
}

inline std::uint32_t Product(const std::int32_t (&light)[3], const std::int16_t (&factors)[3]) {
  const std::int32_t sum = (factors[0] * light[0] + factors[1] * light[1] + factors[2] * light[2] + 2048) >> 12;
  return static_cast<std::uint32_t>(sum < 0 ? 0 : sum > 0xFFFF ? 0xFFFF : sum);
}

inline std::uint8_t ToneOf(const MatrixSteps& steps, std::uint32_t light, std::uint8_t /*sample*/) {
  return steps.bytes[ToneIndex(light)];
}
inline std::uint16_t ToneOf(const MatrixSteps& steps, std::uint32_t light, std::uint16_t /*sample*/) {
  return steps.words[light];
}

template <class Sample>
void ApplyToPixel(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t i, const Room<Sample>& out) {
  const std::uint32_t depth = sizeof(Sample) == 1 ? 8 : steps.depth;
  const std::int32_t light[] = {static_cast<std::int32_t>(LightOf(in.red[i], depth)),
                                static_cast<std::int32_t>(LightOf(in.green[i], depth)),
                                static_cast<std::int32_t>(LightOf(in.blue[i], depth))};
  out.red[i] = ToneOf(steps, Product(light, steps.factors[0]), Sample{});
  out.green[i] = ToneOf(steps, Product(light, steps.factors[1]), Sample{});
  out.blue[i] = ToneOf(steps, Product(light, steps.factors[2]), Sample{});
}

#if LM_LANES

constexpr std::size_t kWords = kLanes / 2;
using HalfU8 = std::uint8_t __attribute__((vector_size(kWords)));

/// Of each 16 bytes of two registers, the first or the last four words of both in turn.
template <std::size_t kFirst, std::size_t... kLane>
inline I16 ZipFours(I16 a, I16 b, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(a, b, (kLane / 8 * 8 + kFirst + kLane % 8 / 2 + kLane % 2 * kWords)...);
}
template <std::size_t kFirst>
inline I16 ZipFours(I16 a, I16 b) {
  return ZipFours<kFirst>(a, b, std::make_index_sequence<kWords>{});
}

/// Registers of samples, widened to 16 bits.
inline U16 Widened(const std::uint8_t* samples, std::uint32_t /*depth*/) {
  HalfU8 half;
  std::memcpy(&half, samples, sizeof half);
  const U16 words = __builtin_convertvector(half, U16);
  return words | words << 8;
}
inline U16 Widened(const std::uint16_t* samples, std::uint32_t depth) {
  const U16 words = Load(samples);
  return words << static_cast<std::uint16_t>(16 - depth) | words >> static_cast<std::uint16_t>(2 * depth - 16);
}

/// Light less 32768.
inline I16 SignedLight(U16 u) { return I16((MultiplyHigh(u, u) + (u >> 15)) ^ 0x8000); }

class RowLanes {
 public:
  RowLanes(const std::int16_t (&factors)[3], std::int32_t constant)
      : mRedGreen(Pair(factors[0], factors[1])), mBlue(Pair(factors[2], 0)), mConstant(I32{} + constant) {}

  /// Light of 16 bits, from pairs of red and green, and of blue and anything.
  U16 operator()(const I16 (&redGreen)[2], const I16 (&blue)[2]) const {
    return U16(ClampPack(Sum(redGreen[0], blue[0]), Sum(redGreen[1], blue[1]))) ^ 0x8000;
  }

 private:
  static I16 Pair(std::int16_t first, std::int16_t second) {
    return I16(I32{} + static_cast<std::int32_t>(static_cast<std::uint16_t>(first) |
                                                 static_cast<std::uint32_t>(static_cast<std::uint16_t>(second)) << 16));
  }
  I32 Sum(I16 redGreen, I16 blue) const {
    return (MultiplyAdd(redGreen, mRedGreen) + MultiplyAdd(blue, mBlue) + mConstant) >> 12;
  }

  const I16 mRedGreen, mBlue;
  const I32 mConstant;
};

inline U16 IndexOf(U16 light, std::uint8_t /*sample*/) { return Least(light, (light >> 4) + 3840); }
inline U16 IndexOf(U16 light, std::uint16_t /*sample*/) { return light; }

inline const std::uint8_t* TableOf(const MatrixSteps& steps, std::uint8_t /*sample*/) { return steps.bytes; }
inline const std::uint16_t* TableOf(const MatrixSteps& steps, std::uint16_t /*sample*/) { return steps.words; }

// Places in the table are computed for some pixels, and then looked up one by one.
template <class Sample>
std::size_t ApplyToBlocks(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count,
                          const Room<Sample>& out) {
  constexpr std::size_t kSome = 128;
  alignas(kLanes) std::uint16_t index[3][kSome];
  const RowLanes rows[] = {{steps.factors[0], steps.constants[0]},
                           {steps.factors[1], steps.constants[1]},
                           {steps.factors[2], steps.constants[2]}};
  const std::uint32_t depth = steps.depth;
  const Sample* const table = TableOf(steps, Sample{});
  const Sample *const red = in.red, *const green = in.green, *const blue = in.blue;
  Sample* const to[] = {out.red, out.green, out.blue};
  const std::size_t whole = count - count % kWords;
  for (std::size_t at = 0; at < whole; at += kSome) {
    const std::size_t some = whole - at < kSome ? whole - at : kSome;
    for (std::size_t i = 0; i < some; i += kWords) {
      const I16 r = SignedLight(Widened(red + at + i, depth));
      const I16 g = SignedLight(Widened(green + at + i, depth));
      const I16 b = SignedLight(Widened(blue + at + i, depth));
      const I16 redGreen[] = {ZipFours<0>(r, g), ZipFours<4>(r, g)};
      const I16 blues[] = {ZipFours<0>(b, b), ZipFours<4>(b, b)};
      for (std::size_t k = 0; k < 3; ++k) Store(IndexOf(rows[k](redGreen, blues), Sample{}), index[k] + i);
    }
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint16_t* const places = index[k];
      StoreJoined(some, to[k] + at, [places, table](std::size_t i, std::size_t j) { return table[places[i + j]]; });
    }
  }
  return whole;
}

#else

template <class Sample>
std::size_t ApplyToBlocks(const Channels<Sample>& /*in*/, const MatrixSteps& /*steps*/, std::size_t /*count*/,
                          const Room<Sample>& /*out*/) {
  return 0;
}

#endif

template <class Sample>
void Apply(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count, const Room<Sample>& out) {
  for (std::size_t i = ApplyToBlocks(in, steps, count, out); i < count; ++i) ApplyToPixel(in, steps, i, out);
}

}  // namespace

MatrixKernel<std::uint8_t> ApplyMatrix;
MatrixKernel<std::uint16_t> ApplyMatrix;
void ApplyMatrix(const Channels<std::uint8_t>& in, const MatrixSteps& steps, std::size_t count,
                 const Room<std::uint8_t>& out) {
  Apply(in, steps, count, out);
}
void ApplyMatrix(const Channels<std::uint16_t>& in, const MatrixSteps& steps, std::size_t count,
                 const Room<std::uint16_t>& out) {
  Apply(in, steps, count, out);
}

}  // namespace LmImagingLib::LM_ISA
