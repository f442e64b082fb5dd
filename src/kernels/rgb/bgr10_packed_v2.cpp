// BGR of 10 bits packed in a 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20;
// and RGB, which has red in bits 9-0.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/exchanged.h"
#include "kernels/writers/interleaved.h"
#include "simd/direct.h"

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

/// Pixels of four bytes: the channels only move by some bits.
/// @tparam kLowIsFirst  whether the lowest byte has the channel of the lowest bits
template <class Layout, bool kLowIsFirst>
struct Tens : SingleLine<Layout> {
#if LM_LANES
  static constexpr bool kRedIsFirst = std::is_same_v<Layout, BGR10PackedV2Layout> != kLowIsFirst;

  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    FourBytePixels<kRedIsFirst> pixels;
    for (std::size_t k = 0; k < 4; ++k) pixels.part[k] = Part(U32(read(0, k * kLanes)));
    store(0, pixels);
  }

 private:
  static U32 Part(U32 v) {
    // Bits 2 to 9 of the lower word and 6 to 13 of the upper one, in one product. Bits 12 to 19 go between them.
    const U16 outer = MultiplyHigh(U16(v), U16(U32{} + (1U << 14 | 1U << 26)));
    return InOrder(EvenOdd(U8(outer), U8(v >> 4)), std::make_index_sequence<kLanes>{});
  }
  template <std::size_t... kLane>
  static U32 InOrder(U8 v, std::index_sequence<kLane...>) {
    if constexpr (kLowIsFirst) {
      return U32(v) & 0xFFFFFF;
    } else {
      return U32(ShuffleUnits(
          v, U8{static_cast<std::uint8_t>(kLane % 4 == 3 ? kNoByte : kLane % 16 / 4 * 4 + 2 - kLane % 4)...}));
    }
  }
#endif
};

using RGB10p32Layout = RedBlueExchanged<BGR10PackedV2Layout>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(BGR10PackedV2, BGR10PackedV2Layout)
LM_EXPORT_WIDE_DECODER(RGB10p32, RGB10p32Layout)
LM_EXPORT_WIDE_LUMA_DECODER(BGR10PackedV2, LumaOf<BGR10PackedV2Layout>)
LM_EXPORT_WIDE_LUMA_DECODER(RGB10p32, LumaOf<BGR10PackedV2Layout, First::kBlue>)
LM_EXPORT_DIRECT(BGR10PackedV2ToRGB32, Tens<BGR10PackedV2Layout, false>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(BGR10PackedV2ToBGR32, Tens<BGR10PackedV2Layout, true>, Interleaved<First::kBlue, 4>)
LM_EXPORT_DIRECT(RGB10p32ToRGB32, Tens<RGB10p32Layout, true>, Interleaved<First::kRed, 4>)
LM_EXPORT_DIRECT(RGB10p32ToBGR32, Tens<RGB10p32Layout, false>, Interleaved<First::kBlue, 4>)
