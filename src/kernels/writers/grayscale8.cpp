// Grayscale8: one byte a pixel.
#include "kernels/writers/plane.h"

namespace LmImagingLib::LM_ISA {

// Gray is never looked up.
StoreKernel<std::uint8_t> StoreGrayscale8;
void StoreGrayscale8(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* /*tables*/, std::size_t count,
                     const TargetLine& out, std::size_t first) {
  StorePlane(in.red, count, out.line + first, out.streams);
}

}  // namespace LmImagingLib::LM_ISA
