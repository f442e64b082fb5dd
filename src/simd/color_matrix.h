#pragma once

#include "simd/strip.h"

namespace LmImagingLib {

/// A table of bytes by `ToneIndex` that rises slowly, in pieces that registers hold: of 16 light below 4096, of 128
/// below 16384, and of 256 above. A piece has two rises at most.
struct ToneParts {
  static constexpr std::size_t kDark = 0, kMiddle = 256, kBright = 384;  ///< where the pieces from no light on begin

  std::uint8_t first[64];   ///< the results of the least light, which may rise fast
  std::uint8_t least[640];  ///< of a piece, less one for each rise that it has not, modulo 256
  std::uint8_t rises[640];  ///< two nibbles: the entries of a piece from which on it is one more; 0 for no rise
};

/// A colour matrix between samples that are square roots of light, and values of a picture: samples are squared to
/// 16 bits of linear light, the matrix is applied and limited to these, and the results are looked up.
struct MatrixSteps {
  std::int16_t factors[3][3];  ///< 4096ths; the absolute values of a row sum to 7 * 4096 at most
  std::int32_t constants[3];   ///< 32768 * (sum of the row - 4096) + 2048
  std::uint32_t depth;         ///< bits of a word
  const std::uint8_t* bytes;   ///< the results of bytes, by `ToneIndex`
  const ToneParts* parts;      ///< the same in parts; null where it rises too fast
  const std::uint16_t* words;  ///< the results of words, one for each of 65536
};

/// Linear light of 16 bits as the place in a table of bytes: all bits in the dark, where tone curves are steep, and the
/// upper 12 above 1/16.
inline constexpr std::uint32_t kToneIndices = 3840 + 4096;
constexpr std::uint32_t ToneIndex(std::uint32_t light) { return light < 4096 ? light : 3840 + (light >> 4); }

/// Applies the matrix to `count` pixels.
template <class Sample>
using MatrixKernel = void(const Channels<Sample>& in, const MatrixSteps& steps, std::size_t count,
                          const Room<Sample>& out);

}  // namespace LmImagingLib
