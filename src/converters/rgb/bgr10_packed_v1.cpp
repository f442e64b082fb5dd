// BGR of 10 bits packed in four bytes: low bits (ignored), then the top 8 bits of blue, green, red.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 4, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = {p[3], p[2], p[1]};
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR10PackedV1Bytes, DecodeColor<Layout>)
