// RGB64: the 16-bit little-endian words red, green, blue and one that is ignored.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 8, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = {Sample16(p + 0, in.shift), Sample16(p + 2, in.shift), Sample16(p + 4, in.shift)};
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB64, DecodeColor<Layout>)
