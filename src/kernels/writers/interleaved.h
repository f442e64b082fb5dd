#pragma once

#include "simd/interleave.h"
#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

enum class First { kRed, kBlue };

/// Colours as three bytes a pixel, or as four of which the last is 0.
template <First kFirst, std::size_t kPixelBytes>
struct Interleaved {
  static constexpr std::size_t kBytes = kPixelBytes;
  static constexpr First kFirstColor = kFirst;

  static void Pixel(Rgb<std::uint8_t> pixel, std::uint8_t* to) {
    to[0] = kFirst == First::kRed ? pixel.r : pixel.b;
    to[1] = pixel.g;
    to[2] = kFirst == First::kRed ? pixel.b : pixel.r;
    if constexpr (kBytes == 4) to[3] = 0;
  }

#if LM_LANES
  template <class To>
  static void GrayBlock(U8 v, To to) {
    if constexpr (kBytes == 4) {
      Block({v, v, v}, to);
    } else {
      StoreTripled(v, to);
    }
  }

  template <class To>
  static void Block(const RgbLanes<std::uint8_t>& in, To to) {
    const U8 first = kFirst == First::kRed ? in.r : in.b;
    const U8 last = kFirst == First::kRed ? in.b : in.r;
    if constexpr (kBytes == 4) {
      StoreInterleaved<std::uint8_t>(first, in.g, last, U8{}, to);
    } else {
      StoreInterleaved<std::uint8_t>(first, in.g, last, to);
    }
  }

  template <class Columns, class To>
  static void Block(const PixelColumns<Columns>& in, To to) {
    if constexpr (kBytes == 3 && !LM_STORES_IN_TURN) {
      // Two pixels are three words, which move in fewer steps than six bytes.
      const ByteColumns made = in.columns.template Made<Halves<true, true, false>>();
      constexpr bool kRedFirst = kFirst == First::kRed;
      const auto first = [](const RgbLanes<std::uint16_t>& of) { return kRedFirst ? of.r : of.b; };
      const auto last = [](const RgbLanes<std::uint16_t>& of) { return kRedFirst ? of.b : of.r; };
      StoreInterleaved<std::uint16_t>(first(made.even) | made.even.g, last(made.even) | first(made.odd),
                                      made.odd.g | last(made.odd), to);
    } else {
      Block(Merged(in), to);
    }
  }

  /// The fourth byte of the pixels is 0.
  template <bool kRedIsFirst, class To>
  static void Block(const FourBytePixels<kRedIsFirst>& in, To to) {
    static_assert(kBytes == 4 && kRedIsFirst == (kFirst == First::kRed));
    for (std::size_t k = 0; k < 4; ++k) Store(U8(in.part[k]), to + k * kLanes);
  }

  /// Zips put the pixels of four bytes in order, words at once.
  template <class Both, class To>
  static void Block(const DealtPixels<Both>& in, To to) {
    static_assert(kBytes == 4);
    constexpr std::bool_constant<kFirst == First::kBlue> kRedIsLast{};
    RgbWords words[2];
    in.both(kRedIsLast, words);
    const auto first = [&](std::size_t k) { return kRedIsLast ? words[k].b : words[k].r; };
    const U8 firsts = ClampJoin(first(0), first(1)), greens = ClampJoin(words[0].g, words[1].g);
    const U16 twos[2] = {U16(ZipHalves<0>(firsts, greens)), U16(ZipHalves<1>(firsts, greens))};
    U16 last[2];
    for (std::size_t k = 0; k < 2; ++k) last[k] = kRedIsLast ? U16(words[k].r) : Clamped(words[k].b);
    for (std::size_t k = 0; k < 2; ++k, to = to + 2 * kLanes) {
      const U8 low = U8(ZipHalves<0>(twos[k], last[k])), high = U8(ZipHalves<1>(twos[k], last[k]));
#if LM_LANES == 32
      StoreHalvesInTurn(low, high, to);
#else
      Store(low, to);
      Store(high, to + kLanes);
#endif
    }
  }

 private:
  static U16 Clamped(I16 v) {
    const I16 positive = v < 0 ? I16{} : v;
    return U16(positive > 255 ? I16{} + 255 : positive);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
