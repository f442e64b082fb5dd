// YCrCb 8-bit 4:4:4, the bytes Y Cr Cb: Cr is V, Cb is U.
#include "converters/yuv/yuv_to_rgb.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 3, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = YuvToRgb(p[0], p[2], p[1]);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(YCrCb444, DecodeColor<Layout>)
