// YUV 8-bit 4:1:1, four pixels in the bytes U Y0 Y1 V Y2 Y3.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 4, kBytes = 6, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = YuvToRgb(p[1], p[0], p[3]);
    out[1] = YuvToRgb(p[2], p[0], p[3]);
    out[2] = YuvToRgb(p[4], p[0], p[3]);
    out[3] = YuvToRgb(p[5], p[0], p[3]);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_411, DecodeColor<Layout>)
