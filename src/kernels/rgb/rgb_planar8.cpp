// Planar RGB of 8 bits: a plane of red, one of green, one of blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

// The planes are channels as they stand.
DecodeKernel<std::uint8_t> RGBPlanar8;
Channels<std::uint8_t> RGBPlanar8(const SourceLines& in, std::size_t first, std::size_t /*count*/,
                                  const Room<std::uint8_t>& /*room*/) {
  return {in.line[0] + first, in.line[1] + first, in.line[2] + first};
}

}  // namespace LmImagingLib::LM_ISA
