// Grayscale of 10 or 12 bits packed for GigE Vision: p0 top 8 bits, low bits of both, p1 top 8 bits.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct GrayscalePackedGEVGroup {
  static constexpr std::size_t kPixels = 2, kSamples = 3;
  static constexpr std::size_t kAt[][kPixels] = {{0, 2}};
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(GrayscalePackedGEV, GraySamples<GrayscalePackedGEVGroup, 1>)
