// Colours by a 3 x 3 matrix: square roots of light are squared, multiplied, and looked up in a tone curve.
//
// A sample t of d bits is widened to 16 by repeating its bits, u = t << (16 - d) | t >> (2d - 16). Light is
// L = (u * u >> 16) + (u >> 15), which has black at 0 and white at 65535. A colour of the result is
// R = clamp((a L(red) + b L(green) + c L(blue) + 2048) >> 12) to 0..65535, with factors in 4096ths.
#include "simd/color_matrix.h"
#include "simd/joined.h"
#include "simd/matrix_lanes.h"
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

/// Looks places up one by one.
template <class Sample>
class ByTable;

template <>
class ByTable<std::uint8_t> {
 public:
  explicit ByTable(const MatrixSteps& steps) : mTable(steps.bytes) {}

  void operator()(const BlockSums& sums, std::uint16_t* places) const {
    Store(Place(ClampPackUp(sums.even[0], sums.even[1])), places);
    Store(Place(ClampPackUp(sums.odd[0], sums.odd[1])), places + kWords);
  }

  void LookUp(const std::uint16_t* places, std::uint8_t* to) const {
    const std::uint8_t* const from = mTable;
    StoreJoined(kBlockPixels, to,
                [places, from](std::size_t i, std::size_t k) { return from[places[i / 2 + k % 2 * kWords + k / 2]]; });
  }

 private:
  static U16 Place(U16 light) { return Least(light, (light >> 4) + 3840); }

  const std::uint8_t* mTable;
};

template <>
class ByTable<std::uint16_t> {
 public:
  explicit ByTable(const MatrixSteps& steps) : mTable(steps.words) {}

  void operator()(const BlockSums& sums, std::uint16_t* places) const {
    for (std::size_t half = 0; half < 2; ++half) {
      Store(ClampPackUp(sums.even[half], sums.odd[half]), places + half * kWords);
    }
  }

  void LookUp(const std::uint16_t* places, std::uint16_t* to) const {
    const std::uint16_t* const from = mTable;
    for (std::size_t i = 0; i < kBlockPixels; i += 8) {
      const std::uint16_t* const at = places + i;
      StoreJoined(8, to + i,
                  [at, from](std::size_t four, std::size_t k) { return from[at[four / 2 + k % 2 * 4 + k / 2]]; });
    }
  }

 private:
  const std::uint16_t* mTable;
};

/// Whole blocks. While places of one are looked up, which leaves vectors idle, those of the next one are computed.
template <class Sample>
void ApplyToBlocks(const ByTable<Sample>& table, const Channels<Sample>& in, const MatrixSteps& steps,
                   std::size_t count, const Room<Sample>& out) {
  const ByTable<Sample> tone = table;
  alignas(kLanes) std::uint16_t places[3][kBlockPixels];
  const RowLanes rows[] = {{steps.factors[0], steps.constants[0]},
                           {steps.factors[1], steps.constants[1]},
                           {steps.factors[2], steps.constants[2]}};
  const std::uint32_t depth = steps.depth;
  const Sample *const red = in.red, *const green = in.green, *const blue = in.blue;
  Sample* const to[] = {out.red, out.green, out.blue};
  for (std::size_t i = 0; i < count; i += kBlockPixels) {
    const HalfLight light[] = {LightOf<0>(red + i, green + i, blue + i, depth),
                               LightOf<1>(red + i, green + i, blue + i, depth)};
#pragma GCC unroll 3
    for (std::size_t k = 0; k < 3; ++k) {
      if (i != 0) tone.LookUp(places[k], to[k] + i - kBlockPixels);
      tone(rows[k](light), places[k]);
    }
  }
  if (count == 0) return;
  for (std::size_t k = 0; k < 3; ++k) tone.LookUp(places[k], to[k] + count - kBlockPixels);
}

/// Computes the results of bytes in registers.
template <class Tone>
struct InRegisters {
  const Tone lanes;
};

template <class Tone>
void ApplyToBlocks(const InRegisters<Tone>& by, const Channels<std::uint8_t>& in, const MatrixSteps& steps,
                   std::size_t count, const Room<std::uint8_t>& out) {
  const Tone tone = by.lanes;
  const RowLanes rows[] = {{steps.factors[0], steps.constants[0]},
                           {steps.factors[1], steps.constants[1]},
                           {steps.factors[2], steps.constants[2]}};
  const std::uint8_t *const red = in.red, *const green = in.green, *const blue = in.blue;
  std::uint8_t* const to[] = {out.red, out.green, out.blue};
  for (std::size_t i = 0; i < count; i += kBlockPixels) {
    const HalfLight light[] = {LightOf<0>(red + i, green + i, blue + i, 8),
                               LightOf<1>(red + i, green + i, blue + i, 8)};
    for (std::size_t k = 0; k < 3; ++k) {
      const BlockSums sums = rows[k](light);
      Store(tone(ClampPackUp(sums.even[0], sums.even[1]), ClampPackUp(sums.odd[0], sums.odd[1])), to[k] + i);
    }
  }
}

template <class Tone, class Sample>
void ApplyBy(const Tone& tone, const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count,
             const Room<Sample>& out) {
  const std::size_t whole = count - count % kBlockPixels, rest = count - whole;
  ApplyToBlocks(tone, in, steps, whole, out);
  if (rest == 0) return;
  // A block that was filled up takes less time than a few pixels one by one.
  Sample from[3][kBlockPixels] = {}, to[3][kBlockPixels];
  std::memcpy(from[0], in.red + whole, rest * sizeof(Sample));
  std::memcpy(from[1], in.green + whole, rest * sizeof(Sample));
  std::memcpy(from[2], in.blue + whole, rest * sizeof(Sample));
  ApplyToBlocks(tone, Channels<Sample>{from[0], from[1], from[2]}, steps, kBlockPixels,
                Room<Sample>{to[0], to[1], to[2]});
  std::memcpy(out.red + whole, to[0], rest * sizeof(Sample));
  std::memcpy(out.green + whole, to[1], rest * sizeof(Sample));
  std::memcpy(out.blue + whole, to[2], rest * sizeof(Sample));
}

template <class Sample>
void Apply(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count, const Room<Sample>& out) {
  if constexpr (sizeof(Sample) == 1) {
    if (steps.isLinear) return ApplyBy(InRegisters<LinearLanes>{}, in, steps, count, out);
#if LM_BYTE_SHUFFLE == 64
    if (steps.lines != nullptr) {
      if (steps.lines->hasFirst) {
        return ApplyBy(InRegisters<ToneLanes<true>>{ToneLanes<true>(*steps.lines)}, in, steps, count, out);
      }
      return ApplyBy(InRegisters<ToneLanes<false>>{ToneLanes<false>(*steps.lines)}, in, steps, count, out);
    }
#endif
  }
  ApplyBy(ByTable<Sample>(steps), in, steps, count, out);
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
