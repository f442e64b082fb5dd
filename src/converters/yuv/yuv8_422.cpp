// YUV 8-bit 4:2:2, two pixels in the bytes Y0 U Y1 V.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 4, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = YuvToRgb(p[0], p[1], p[3]);
    out[1] = YuvToRgb(p[2], p[1], p[3]);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YUV8_422, DecodeColor<Layout>)
