// Planar RGB of 8 bits: a plane of red, one of green, one of blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

// The planes are channels as they stand.
DecodeKernel RGBPlanar8;
Channels RGBPlanar8(const SourceLines& in, std::size_t first, std::size_t /*count*/, const Room& /*room*/) {
  return {in.line[0] + first, in.line[1] + first, in.line[2] + first};
}

}  // namespace LmImagingLib::LM_ISA
