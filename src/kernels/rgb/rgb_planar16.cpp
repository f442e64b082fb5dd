// Planar RGB of 16-bit little-endian words: a plane of red, one of green, one of blue.
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGBPlanar16Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 2, kLines = 3, kBeyond = 0;
  static constexpr bool kGray = false;

  static void Group(const SourceLines& in, Rgb* out) {
    out[0] = {Sample16(in.line[0], in.shift), Sample16(in.line[1], in.shift), Sample16(in.line[2], in.shift)};
  }

#if LM_LANES
  template <class Reader>
  static RgbLanes Block(const Reader& read) {
    U8 plane[3][1];
    for (std::size_t k = 0; k < 3; ++k) LoadSamples<2>(read, k, 0, kLanes, plane[k]);
    return {plane[0][0], plane[1][0], plane[2][0]};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGBPlanar16, RGBPlanar16Layout)
