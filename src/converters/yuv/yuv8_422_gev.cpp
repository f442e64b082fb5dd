// YUV 8-bit 4:2:2 GEV, two pixels in the bytes U Y0 V Y1.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 4, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = YuvToRgb(p[1], p[0], p[2]);
    out[1] = YuvToRgb(p[3], p[0], p[2]);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_422_GEV, DecodeColor<Layout>)
