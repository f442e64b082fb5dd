#pragma once

#include "simd/fields.h"
#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// RGB16: a 16-bit little-endian word, red in bits 15-11, green in 10-5, blue in 4-0.
struct RGB16Writer {
  static constexpr std::size_t kBytes = 2;

  static void Pixel(Rgb<std::uint8_t> pixel, std::uint8_t* to) {
    const auto word = static_cast<std::uint16_t>((pixel.r & 0xF8) << 8 | (pixel.g & 0xFC) << 3 | pixel.b >> 3);
    std::memcpy(to, &word, sizeof word);
  }

#if LM_LANES
  // Bytes moved by shifts of words; what comes from the neighbour is masked.
  template <class To>
  static void Block(const RgbLanes<std::uint8_t>& in, To to) {
    const U8 upper = (in.r & 0xF8) | (U8(U16(in.g) >> 5) & 0x07);
    const U8 lower = (U8(U16(in.g) << 3) & 0xE0) | (U8(U16(in.b) >> 3) & 0x1F);
    constexpr std::make_index_sequence<kLanes> kAll{};
    Store(Zip<0>(lower, upper, kAll), to);
    Store(Zip<1>(lower, upper, kAll), to + kLanes);
  }

  // Of whole pixels as sums: eight times the word is blue + 64 green + 2048 red, of the bits that are kept.
  template <bool kRedIsFirst, class To>
  static void Block(const FourBytePixels<kRedIsFirst>& in, To to) {
    constexpr std::uint32_t kKept = 0xF8FCF8, kFactors = kRedIsFirst ? 0x010240 : 0x404001;
    const I16 sums = I16(U32{} + (kRedIsFirst ? 0x10020 : 0x200001));
    const auto part = [&](std::size_t k) {
      return I32(U32(MultiplyAdd(MultiplyAddBytes(U8(U32{} + kFactors), U16(in.part[k] & kKept)), sums)) >> 3);
    };
    Store(U8(CollectPairs(U32(ClampPackUp(part(0), part(1))), std::make_index_sequence<kLanes / 4>{})), to);
    Store(U8(CollectPairs(U32(ClampPackUp(part(2), part(3))), std::make_index_sequence<kLanes / 4>{})), to + kLanes);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
