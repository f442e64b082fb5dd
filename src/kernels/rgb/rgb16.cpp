// RGB16: a 16-bit little-endian word, red in bits 15-11, green in 10-5, blue in 4-0. RGB565p: red in the low bits.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
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

// The weighted sum of colours of 8 bits fits a word, so that luma is computed in the words of the pixels.
template <First kFirst>
struct LumaOfRGB16 : LumaOf<RGB16Layout, kFirst> {
#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t>) {
    const auto [first, second] = read.Words(0, 0);
    return JoinWords(Luma(first), Luma(second));
  }

 private:
  static U16 Luma(U16 v) {
    constexpr LumaWeights kWeights = LumaOfRGB16::kWeights;
    constexpr std::uint16_t kRed = 8 * kWeights.red, kGreen = 4 * kGreenWeight, kBlue = 8 * kWeights.blue;
    return ((v >> 11) * kRed + (v >> 5 & 63) * kGreen + (v & 31) * kBlue + std::uint16_t{kLumaHalf}) >> 8;
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_DECODER(RGB16, RGB16Layout)
LM_EXPORT_DECODER(RGB565p, RedBlueExchanged<RGB16Layout>)
LM_EXPORT_LUMA_DECODER(RGB16, LumaOfRGB16<First::kRed>)
LM_EXPORT_LUMA_DECODER(RGB565p, LumaOfRGB16<First::kBlue>)
