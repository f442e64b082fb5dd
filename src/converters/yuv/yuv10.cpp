// YUV 10-bit 4:2:2, two pixels in the 16-bit little-endian words Y0 U Y1 V.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 8, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    const std::uint8_t u = Sample16(p + 2, in.shift);
    const std::uint8_t v = Sample16(p + 6, in.shift);
    out[0] = YuvToRgb(Sample16(p, in.shift), u, v);
    out[1] = YuvToRgb(Sample16(p + 4, in.shift), u, v);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV10, DecodeColor<Layout>)
