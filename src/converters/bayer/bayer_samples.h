#pragma once

#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Mosaic samples of one byte, or of 10 to 16 bits in 16-bit little-endian words, brought to 8 bits.
template <std::size_t kSampleBytes>
unsigned SampleAt(const std::uint8_t* line, std::size_t column, std::uint32_t shift) {
  if constexpr (kSampleBytes == 1) {
    return line[column];
  } else {
    return Sample16(line + 2 * column, shift);
  }
}

inline Rgb MakeRgb(unsigned r, unsigned g, unsigned b) {
  return {static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g), static_cast<std::uint8_t>(b)};
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
