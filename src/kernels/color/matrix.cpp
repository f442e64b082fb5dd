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
#include "simd/interleave.h"
#include "simd/joined.h"
#include "simd/tone_lanes.h"

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

/// Of each 16 bytes of two registers, the first or the last four words of both in turn.
template <std::size_t kFirst, std::size_t... kLane>
inline I16 ZipFours(I16 a, I16 b, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(a, b, (kLane / 8 * 8 + kFirst + kLane % 8 / 2 + kLane % 2 * kWords)...);
}
template <std::size_t kFirst>
inline I16 ZipFours(I16 a, I16 b) {
  return ZipFours<kFirst>(a, b, std::make_index_sequence<kWords>{});
}

/// Samples widened to 16 bits: of a register of bytes either half of each 16 bytes.
template <std::size_t kHalf>
inline U16 Widened(const std::uint8_t* samples, std::uint32_t /*depth*/) {
  const U8 bytes = Load(samples);
  return U16(ZipHalves<kHalf>(bytes, bytes));
}
template <std::size_t kHalf>
inline U16 Widened(const std::uint16_t* samples, std::uint32_t depth) {
  const U16 words = Load(samples + kHalf * kWords);
  return words << static_cast<std::uint16_t>(16 - depth) | words >> static_cast<std::uint16_t>(2 * depth - 16);
}

/// Light less 32768.
inline I16 SignedLight(U16 u) { return I16((MultiplyHigh(u, u) + (u >> 15)) ^ 0x8000); }

class RowLanes {
 public:
  RowLanes(const std::int16_t (&factors)[3], std::int32_t constant)
      : mRedGreen(Pair(factors[0], factors[1])), mBlue(Pair(factors[2], 0)), mConstant(I32{} + constant) {}

  /// Light less 32768, from pairs of red and green, and of blue and anything.
  I16 operator()(const I16 (&redGreen)[2], const I16 (&blue)[2]) const {
    return ClampPack(Sum(redGreen[0], blue[0]), Sum(redGreen[1], blue[1]));
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

/// Pixels of a block: two registers of light.
constexpr std::size_t kBlockPixels = kLanes;

/// Looks places up one by one.
template <class Sample>
struct ByTable;

template <>
struct ByTable<std::uint8_t> {
  static constexpr std::size_t kSome = 128;  ///< pixels whose places are computed before they are looked up

  explicit ByTable(const MatrixSteps& steps) : table(steps.bytes) {}
  static U16 Place(I16 signedLight) {
    const U16 light = U16(signedLight) ^ 0x8000;
    return Least(light, (light >> 4) + 3840);
  }

  // Both halves of each 16 pixels are in registers of their own.
  void operator()(const std::uint16_t* places, std::size_t count, std::uint8_t* to) const {
    const std::uint8_t* const from = table;
    for (std::size_t i = 0; i < count; i += kBlockPixels) {
#pragma GCC unroll 8
      for (std::size_t eight = 0; eight < kBlockPixels / 8; ++eight) {
        const std::uint16_t* const at = places + i + eight % 2 * kWords + eight / 2 * 8;
        StoreJoined(8, to + i + 8 * eight, [at, from](std::size_t /*first*/, std::size_t k) { return from[at[k]]; });
      }
    }
  }

  const std::uint8_t* table;
};

template <>
struct ByTable<std::uint16_t> {
  static constexpr std::size_t kSome = 128;

  explicit ByTable(const MatrixSteps& steps) : table(steps.words) {}
  static U16 Place(I16 signedLight) { return U16(signedLight) ^ 0x8000; }
  void operator()(const std::uint16_t* places, std::size_t count, std::uint16_t* to) const {
    const std::uint16_t* const from = table;
    StoreJoined(count, to, [places, from](std::size_t i, std::size_t k) { return from[places[i + k]]; });
  }

  const std::uint16_t* table;
};

#if LM_BYTE_SHUFFLE == 64
/// Looks light up in registers.
struct ByParts {
  static constexpr std::size_t kSome = 512;

  explicit ByParts(const MatrixSteps& steps) : tones(*steps.parts) {}

  static U16 Place(I16 signedLight) { return U16(signedLight); }
  void operator()(const std::uint16_t* light, std::size_t count, std::uint8_t* to) const {
    const ToneLanes lanes = tones;
    const auto* const from = reinterpret_cast<const std::uint8_t*>(light);
    for (std::size_t i = 0; i < count; i += kLanes) {
      Store(lanes(U16(Load(from + 2 * i)), U16(Load(from + 2 * i + kLanes))), to + i);
    }
  }

  const ToneLanes tones;
};
#endif

template <std::size_t kHalf, class Tone, class Sample>
[[gnu::always_inline]] inline void PlaceHalf(const Sample* red, const Sample* green, const Sample* blue,
                                             std::uint32_t depth, const RowLanes (&rows)[3],
                                             std::uint16_t* const (&places)[3]) {
  const I16 r = SignedLight(Widened<kHalf>(red, depth));
  const I16 g = SignedLight(Widened<kHalf>(green, depth));
  const I16 b = SignedLight(Widened<kHalf>(blue, depth));
  const I16 redGreen[] = {ZipFours<0>(r, g), ZipFours<4>(r, g)};
  const I16 blues[] = {ZipFours<0>(b, b), ZipFours<4>(b, b)};
  for (std::size_t k = 0; k < 3; ++k) {
    Store(Tone::Place(rows[k](redGreen, blues)), places[k] + kHalf * kWords);
  }
}

// Whole blocks.
template <class Tone, class Sample>
void ApplyToBlocks(const Channels<Sample>& in, const MatrixSteps& steps, const Tone& tone, std::size_t count,
                   const Room<Sample>& out) {
  constexpr std::size_t kSome = Tone::kSome;
  alignas(kLanes) std::uint16_t places[3][kSome];
  const RowLanes rows[] = {{steps.factors[0], steps.constants[0]},
                           {steps.factors[1], steps.constants[1]},
                           {steps.factors[2], steps.constants[2]}};
  const std::uint32_t depth = steps.depth;
  const Sample *const red = in.red, *const green = in.green, *const blue = in.blue;
  Sample* const to[] = {out.red, out.green, out.blue};
  for (std::size_t at = 0; at < count; at += kSome) {
    const std::size_t some = count - at < kSome ? count - at : kSome;
    for (std::size_t i = 0; i < some; i += kBlockPixels) {
      std::uint16_t* const of[] = {places[0] + i, places[1] + i, places[2] + i};
      PlaceHalf<0, Tone>(red + at + i, green + at + i, blue + at + i, depth, rows, of);
      PlaceHalf<1, Tone>(red + at + i, green + at + i, blue + at + i, depth, rows, of);
    }
    for (std::size_t k = 0; k < 3; ++k) tone(places[k], some, to[k] + at);
  }
}

template <class Tone, class Sample>
void ApplyBy(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count, const Room<Sample>& out) {
  const Tone tone(steps);
  const std::size_t whole = count - count % kBlockPixels, rest = count - whole;
  ApplyToBlocks(in, steps, tone, whole, out);
  if (rest == 0) return;
  // A block that was filled up takes less time than a few pixels one by one.
  Sample from[3][kBlockPixels] = {}, to[3][kBlockPixels];
  std::memcpy(from[0], in.red + whole, rest * sizeof(Sample));
  std::memcpy(from[1], in.green + whole, rest * sizeof(Sample));
  std::memcpy(from[2], in.blue + whole, rest * sizeof(Sample));
  ApplyToBlocks<Tone, Sample>({from[0], from[1], from[2]}, steps, tone, kBlockPixels, {to[0], to[1], to[2]});
  std::memcpy(out.red + whole, to[0], rest * sizeof(Sample));
  std::memcpy(out.green + whole, to[1], rest * sizeof(Sample));
  std::memcpy(out.blue + whole, to[2], rest * sizeof(Sample));
}

template <class Sample>
void Apply(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count, const Room<Sample>& out) {
#if LM_BYTE_SHUFFLE == 64
  if constexpr (sizeof(Sample) == 1) {
    if (steps.parts != nullptr) return ApplyBy<ByParts>(in, steps, count, out);
  }
#endif
  ApplyBy<ByTable<Sample>>(in, steps, count, out);
}

#else

template <class Sample>
void Apply(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count, const Room<Sample>& out) {
  for (std::size_t i = 0; i < count; ++i) ApplyToPixel(in, steps, i, out);
}

#endif

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
