// Grayscale of 10 or 12 bits packed: p0 in bits 0-11 and p1 in bits 12-23 of three bytes, lowest first.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 2, kBytes = 3, kLines = 1;
  static void Gray(const SourceLines& in, std::uint8_t* out) {
    const std::uint8_t* p = in.line[0];
    out[0] = static_cast<std::uint8_t>((p[0] | (p[1] & 0x0FU) << 8) >> in.shift);
    out[1] = static_cast<std::uint8_t>((p[1] >> 4 | std::uint32_t{p[2]} << 4) >> in.shift);
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(Grayscale12Packed, DecodeGray<Layout>)
