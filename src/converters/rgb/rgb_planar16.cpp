// Planar RGB of 16-bit little-endian words: a plane of red, one of green, one of blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 2, kLines = 3;
  static void Color(const SourceLines& in, Rgb* out) {
    out[0] = {Sample16(in.line[0], in.shift), Sample16(in.line[1], in.shift), Sample16(in.line[2], in.shift)};
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGBPlanar16, DecodeColor<Layout>)
