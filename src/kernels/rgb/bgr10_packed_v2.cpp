// BGR of 10 bits packed in a 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20;
// and RGB, which has red in bits 9-0.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/exchanged.h"
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR10PackedV2Layout {
  static constexpr std::size_t kPixels = 1, kBytes = 4, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Sample>
  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    constexpr unsigned kDown = sizeof(Sample) == 1 ? 2 : 0;
    constexpr std::uint32_t kMask = 0x3FF >> kDown;
    std::uint32_t word;
    std::memcpy(&word, in.line[0], sizeof word);
    out[0] = {static_cast<Sample>(word >> (20 + kDown) & kMask), static_cast<Sample>(word >> (10 + kDown) & kMask),
              static_cast<Sample>(word >> kDown & kMask)};
  }

#if LM_LANES
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    U32 pixels[4];
    for (std::size_t k = 0; k < 4; ++k) pixels[k] = U32(read(0, k * kLanes));
    return {FieldOf(pixels, 22), FieldOf(pixels, 12), FieldOf(pixels, 2)};
  }

  template <class Reader>
  static RgbLanes<std::uint16_t> Block(const Reader& read, Of<std::uint16_t>) {
    const U32 pixels[] = {U32(read(0, 0)), U32(read(0, kLanes))};
    return {FieldOf(pixels, 20, 0x3FF), FieldOf(pixels, 10, 0x3FF), FieldOf(pixels, 0, 0x3FF)};
  }

  template <std::size_t kPart, std::size_t kParts, class Reader, class Sample>
  static WordPixels Pixels(const Reader& read, Of<Sample>) {
    constexpr unsigned kDown = sizeof(Sample) == 1 ? 2 : 0;
    constexpr std::uint32_t kMask = 0x3FF >> kDown;
    const U32 pixels = U32(read(0, kPart * kLanes)) >> kDown;
    return {(pixels >> 20 & kMask) | (pixels & kMask) << 16, pixels >> 10 & kMask};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR10PackedV2, BGR10PackedV2Layout)
LM_EXPORT_WIDE_DECODER(RGB10p32, RedBlueExchanged<BGR10PackedV2Layout>)
LM_EXPORT_WIDE_LUMA_DECODER(BGR10PackedV2, LumaOf<BGR10PackedV2Layout>)
LM_EXPORT_WIDE_LUMA_DECODER(RGB10p32, LumaOf<BGR10PackedV2Layout, First::kBlue>)
