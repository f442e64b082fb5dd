// RGB of 12 bits packed, two pixels in nine bytes: R0, low bits of R0 and G0, G0, B0, low, R1, G1, low, B1.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 9, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = {p[0], p[2], p[3]};
    out[1] = {p[5], p[6], p[8]};
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB12PackedV1Bytes, DecodeColor<Layout>)
