// RGB16: a 16-bit little-endian word, red in bits 15-11, green in 10-5, blue in 4-0. RGB565p: red in the low bits.
#include "kernels/decoder.h"
#include "kernels/rgb/exchanged.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct RGB16Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 2, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = false;

  // The low bits stay 0, so that white is 248, 252, 248: a round trip through RGB16 changes nothing.
  static void Group(const SourceLines& in, Rgb<std::uint8_t>* out) {
    const std::uint32_t word = Load16(in.line[0]);
    out[0] = {static_cast<std::uint8_t>(word >> 8 & 0xF8), static_cast<std::uint8_t>(word >> 3 & 0xFC),
              static_cast<std::uint8_t>(word << 3 & 0xF8)};
  }

#if LM_LANES
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    const auto [first, second] = read.Words(0, 0);
    return {JoinWords(first >> 8 & 0xF8, second >> 8 & 0xF8), JoinWords(first >> 3 & 0xFC, second >> 3 & 0xFC),
            JoinWords(first << 3 & 0xF8, second << 3 & 0xF8)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB16, RGB16Layout)
LM_EXPORT_DECODER(RGB565p, RedBlueExchanged<RGB16Layout>)
