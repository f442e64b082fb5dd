// Grayscale of 10 to 16 bits in 16-bit little-endian words.
#include "kernels/decoder.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {

static_assert(HasRow("Grayscale16", 1, 2));

DecodeKernel<std::uint8_t> Grayscale16;
Channels<std::uint8_t> Grayscale16(const SourceLines& in, std::size_t first, std::size_t count,
                                   const Room<std::uint8_t>& room) {
  return WordsToBytes(in, first, count, room);
}

}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DECODER(std::uint16_t, Grayscale16, GraySamples<SingleSample, 2>)
