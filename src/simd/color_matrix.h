#pragma once

#include "simd/strip.h"

namespace LmImagingLib {

/// A colour matrix between samples that are square roots of light, and values of a picture: samples are squared to
/// 16 bits of linear light, the matrix is applied and limited to these, and the results are looked up.
struct MatrixSteps {
  std::int16_t factors[3][3];  ///< 4096ths; the absolute values of a row sum to 7 * 4096 at most
  std::int32_t constants[3];   ///< 32768 * (sum of the row - 4096) + 2048
  std::uint32_t depth;         ///< bits of a word
  const std::uint8_t* bytes;   ///< the results of bytes, by `ToneIndex`
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
