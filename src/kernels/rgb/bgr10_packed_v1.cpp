// BGR of 10 bits packed in four bytes: the low bits of blue, green and red from bit 0 on, then the top 8 bits of each;
// and RGB, which has them the other way around.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/exchanged.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct BGR10PackedV1Group {
  static constexpr std::size_t kPixels = 1, kSamples = 4;
  static constexpr std::size_t kAt[][kPixels] = {{3}, {2}, {1}};  // red, green, blue
};

struct BGR10PackedV1Layout : ColorSamples<BGR10PackedV1Group, 1> {
  using ColorSamples::Group;
  static void Group(const SourceLines& in, Rgb<std::uint16_t>* out) {
    const std::uint8_t* const p = in.line[0];
    const auto sample = [p](unsigned top, unsigned low) {
      return static_cast<std::uint16_t>(p[top] << 2 | (p[0] >> low & 3));
    };
    out[0] = {sample(3, 4), sample(2, 2), sample(1, 0)};
  }

#if LM_LANES
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t> samples) {
    return ColorSamples::Block(read, samples);
  }

  // Words 0 and 1 of each pixel: low bits and blue, green and red.
  template <std::size_t kWord>
  struct WordIndex {
    static constexpr std::size_t At(std::size_t lane) { return 2 * lane + kWord; }
  };

  template <class Reader>
  static RgbLanes<std::uint16_t> Block(const Reader& read, Of<std::uint16_t>) {
    const U16 window[2] = {U16(read(0, 0)), U16(read(0, kLanes))};
    const U16 first = Pick<WordIndex<0>>(window);
    const U16 second = Pick<WordIndex<1>>(window);
    return {(second >> 8 << 2) | (first >> 4 & 3), ((second & 0xFF) << 2) | (first >> 2 & 3),
            (first >> 8 << 2) | (first & 3)};
  }

  template <std::size_t kPart, std::size_t, class Reader>
  static WordPixels Pixels(const Reader& read, Of<std::uint8_t>) {
    const U32 v = U32(read(0, kPart * kLanes));
    return {v >> 24 | (v << 8 & 0xFF0000), v >> 16 & 0xFF};
  }
  template <std::size_t kPart, std::size_t, class Reader>
  static WordPixels Pixels(const Reader& read, Of<std::uint16_t>) {
    const U32 v = U32(read(0, kPart * kLanes));
    return {(v >> 22 & 0x3FC) | (v >> 4 & 3) | (v << 10 & 0x3FC0000) | (v << 16 & 0x30000),
            (v >> 14 & 0x3FC) | (v >> 2 & 3)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR10PackedV1, BGR10PackedV1Layout)
LM_EXPORT_WIDE_DECODER(RGB10V1Packed, RedBlueExchanged<BGR10PackedV1Layout>)
LM_EXPORT_WIDE_LUMA_DECODER(BGR10PackedV1, LumaOf<BGR10PackedV1Layout>)
LM_EXPORT_WIDE_LUMA_DECODER(RGB10V1Packed, LumaOf<BGR10PackedV1Layout, First::kBlue>)
