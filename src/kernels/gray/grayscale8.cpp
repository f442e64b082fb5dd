// Grayscale of 8 bits, one byte a pixel.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

// The line is a channel, without decoding.
DecodeKernel<std::uint8_t> Grayscale8;
Channels<std::uint8_t> Grayscale8(const SourceLines& in, std::size_t first, std::size_t /*count*/,
                                  const Room<std::uint8_t>& /*room*/) {
  const std::uint8_t* const line = in.line[0] + first;
  return {line, line, line};
}

}  // namespace LmImagingLib::LM_ISA
