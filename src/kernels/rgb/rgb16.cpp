// RGB16: a 16-bit little-endian word, red in bits 15-11, green in 10-5, blue in 4-0. RGB565p: red in the low bits.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/exchanged.h"
#include "kernels/writers/interleaved.h"
#include "simd/direct.h"

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
    // Five bits are shifted to the top of a byte when they are joined: nothing is left to mask then.
    const auto fives = [](U16 a, U16 b) { return U8(U16(JoinWords(a, b)) << 3); };
    return {fives(first >> 11, second >> 11), JoinWords(first >> 3 & 0xFC, second >> 3 & 0xFC),
            fives(first & 31, second & 31)};
  }
#endif
};

/// Pixels of four bytes, made of words: two channels and one.
/// @tparam kLowIsFirst  whether the lowest byte has the channel of the lowest bits
template <class Layout, bool kLowIsFirst>
struct RGB16InFourBytes : SingleLine<Layout> {
#if LM_LANES
  static constexpr bool kRedIsFirst = std::is_same_v<Layout, RGB16Layout> != kLowIsFirst;

  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    FourBytePixels<kRedIsFirst> pixels;
    for (std::size_t k = 0; k < 2; ++k) {
      const U16 v = U16(ReadDealt(read, 0, k * kLanes));
      const U16 bottom = v << 3, top = v >> 8;
      const U16 two = U16(EvenOdd(U8(kLowIsFirst ? bottom : top), U8(v << 5))) & 0xFCF8;
      const U16 one = (kLowIsFirst ? top : bottom) & 0xF8;
      pixels.part[2 * k] = U32(ZipHalves<0>(two, one));
      pixels.part[2 * k + 1] = U32(ZipHalves<1>(two, one));
    }
    store(0, pixels);
  }
#endif
};

using RGB565pLayout = RedBlueExchanged<RGB16Layout>;

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
LM_EXPORT_DECODER(RGB565p, RGB565pLayout)
LM_EXPORT_LUMA_DECODER(RGB16, LumaOfRGB16<First::kRed>)
LM_EXPORT_LUMA_DECODER(RGB565p, LumaOfRGB16<First::kBlue>)
LM_EXPORT_DIRECT(RGB16ToRGB24, SingleLine<RGB16Layout>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(RGB16ToBGR24, SingleLine<RGB16Layout>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(RGB16ToRGB32, RGB16InFourBytes<RGB16Layout, false>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(RGB16ToBGR32, RGB16InFourBytes<RGB16Layout, true>, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(RGB565pToRGB24, SingleLine<RGB565pLayout>, Interleaved<First::kRed, 3>)
LM_EXPORT_DIRECT(RGB565pToBGR24, SingleLine<RGB565pLayout>, Interleaved<First::kBlue, 3>)
LM_EXPORT_DIRECT(RGB565pToRGB32, RGB16InFourBytes<RGB565pLayout, true>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(RGB565pToBGR32, RGB16InFourBytes<RGB565pLayout, false>, Interleaved<First::kBlue, 4>)
