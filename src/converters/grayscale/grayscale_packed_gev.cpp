// Grayscale of 10 or 12 bits packed for GigE Vision: p0 top 8 bits, low bits of both, p1 top 8 bits.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 3, kLines = 1;
  static void Gray(const SourceLines& in, std::uint8_t* out) {
    out[0] = in.line[0][0];
    out[1] = in.line[0][2];
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(GrayscalePackedGEV, DecodeGray<Layout>)
