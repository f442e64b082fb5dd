#pragma once

#include "simd/strip.h"

namespace LmImagingLib {

/// A table of bytes by `ToneIndex` that rises slowly, as straight lines between numbers of light, and corrections.
///
/// Light below 4096 is scaled up by 16. A line of 2048 scaled light gives the result or one less: 64ths of it are
/// `base + (slope * scaled >> 16)`. It is one more where the lower 8 bits of the table's index are less than `kReach`
/// after those of the next rise, modulo 256.
struct ToneLines {
  static constexpr std::uint32_t kLight = 2048;  ///< scaled light of a line
  static constexpr std::uint32_t kReach = 64;

  std::uint16_t base[2][32], slope[2][32];  ///< of dark light, and of other
  std::uint8_t next[256];                   ///< where results rise to the next one: the lower 8 bits of the index
  std::uint8_t first[64];                   ///< the results of the least light, which may rise fast
  bool hasFirst;                            ///< whether it has to be looked up there
};

/// A colour matrix between samples that are square roots of light, and values of a picture: samples are squared to
/// 16 bits of linear light, the matrix is applied and limited to these, and the results are looked up.
struct MatrixSteps {
  std::int16_t factors[3][3];  ///< 4096ths; the absolute values of a row sum to 7 * 4096 at most
  std::int32_t constants[3];   ///< 32768 * sum of the row + 2048
  std::uint32_t depth;         ///< bits of a word
  const std::uint8_t* bytes;   ///< the results of bytes, by `ToneIndex`
  bool isLinear;               ///< whether these are all `LinearTone`
  const ToneLines* lines;      ///< the same as lines; null where it rises too fast
  const std::uint16_t* words;  ///< the results of words, one for each of 65536
};

/// Linear light of 16 bits as the place in a table of bytes: all bits in the dark, where tone curves are steep, and the
/// upper 12 above 1/16.
inline constexpr std::uint32_t kToneIndices = 3840 + 4096;
constexpr std::uint32_t ToneIndex(std::uint32_t light) { return light < 4096 ? light : 3840 + (light >> 4); }

/// The byte of a place by `ToneIndex` without a tone curve: light divided by 257 and rounded, of a place above 1/16
/// that in the middle of it.
constexpr std::uint8_t LinearTone(std::uint32_t index) {
  const std::uint32_t light = index < 4096 ? index : (index - 3840) * 16 + 8;
  return static_cast<std::uint8_t>(((light * 65281 >> 16) + 128) >> 8);
}

/// Applies the matrix to `count` pixels.
template <class Sample>
using MatrixKernel = void(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count,
                          const Room<Sample>& out);

}  // namespace LmImagingLib
