// Grayscale8: one byte a pixel.
#include "kernels/writers/plane.h"

namespace LmImagingLib::LM_ISA {

// Gray is never looked up.
StoreKernel StoreGrayscale8;
void StoreGrayscale8(const Channels& in, const LookupTables* /*tables*/, std::size_t count, const TargetLine& out,
                     std::size_t first) {
  StorePlane(in.red, count, out.line + first, out.streams);
}

}  // namespace LmImagingLib::LM_ISA
