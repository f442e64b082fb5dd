// Planar24: three planes of one byte a pixel: red, green, blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

// memmove: a planar source that is converted in place hands its own planes in.
StoreKernel StorePlanar24;
void StorePlanar24(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first) {
  std::uint8_t* const to = out.line + first;
  std::memmove(to, in.red, count);
  std::memmove(to + out.planeSize, in.green, count);
  std::memmove(to + 2 * out.planeSize, in.blue, count);
}

}  // namespace LmImagingLib::LM_ISA
