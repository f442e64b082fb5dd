// Grayscale8: one byte a pixel.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

StoreKernel StoreGrayscale8;
void StoreGrayscale8(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first) {
  std::uint8_t* const to = out.line + first;
  if (in.red != to) std::memmove(to, in.red, count);
}

}  // namespace LmImagingLib::LM_ISA
