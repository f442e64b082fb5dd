// BGR of 10 bits packed in a 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 4, kLines = 1;
  static void Color(const SourceLines& in, Rgb* out) {
    std::uint32_t word;
    std::memcpy(&word, in.line[0], sizeof word);
    out[0] = {static_cast<std::uint8_t>(word >> 22), static_cast<std::uint8_t>(word >> 12),
              static_cast<std::uint8_t>(word >> 2)};
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(BGR10PackedV2Word, DecodeColor<Layout>)
