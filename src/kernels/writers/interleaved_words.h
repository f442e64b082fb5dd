#pragma once

#include "kernels/writers/interleaved.h"
#include "simd/wide_stores.h"
#include "simd/word_columns.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Colours as three 16-bit little-endian words a pixel, or as four of which the last is 0.
template <First kFirst, std::size_t kPixelWords>
struct InterleavedWords {
  static constexpr std::size_t kBytes = 2 * kPixelWords;

  static void Pixel(Rgb<std::uint16_t> pixel, std::uint8_t* to) {
    // Word by word: loads of more than that from a copy would wait for its stores.
    const auto store = [to](std::size_t k, std::uint16_t word) { std::memcpy(to + 2 * k, &word, sizeof word); };
    store(0, kFirst == First::kRed ? pixel.r : pixel.b);
    store(1, pixel.g);
    store(2, kFirst == First::kRed ? pixel.b : pixel.r);
    if constexpr (kPixelWords == 4) store(3, 0);
  }

#if LM_LANES
  template <class To>
  static void Block(const RgbLanes<std::uint16_t>& in, To to) {
    const U16 first = kFirst == First::kRed ? in.r : in.b;
    const U16 last = kFirst == First::kRed ? in.b : in.r;
    if constexpr (kPixelWords == 4) {
      StoreInterleaved<std::uint16_t>(first, in.g, last, U16{}, to);
    } else {
      StoreInterleaved<std::uint16_t>(first, in.g, last, to);
    }
  }
#endif
};

/// Words of all their bits, shifted up to the destination's, as the writer of a conversion without strips.
template <First kFirst, std::size_t kPixelWords>
class ShiftedWords : public InterleavedWords<kFirst, kPixelWords> {
  using Words = InterleavedWords<kFirst, kPixelWords>;

 public:
  ShiftedWords(const TargetLine& target, Site /*site*/) : mFactor(static_cast<std::uint16_t>(1U << target.fit.up)) {}

  void Pixel(const Rgb<std::uint16_t>& pixel, std::uint8_t* to) const {
    const auto shifted = [this](std::uint16_t word) {
      return static_cast<std::uint16_t>(std::uint32_t{word} * mFactor);
    };
    Words::Pixel({shifted(pixel.r), shifted(pixel.g), shifted(pixel.b)}, to);
  }

#if LM_LANES
  U16 Shifted(U16 words) const { return words * mFactor; }

  template <class To>
  void Block(const RgbLanes<std::uint16_t>& in, To to) const {
    Words::Block({Shifted(in.r), Shifted(in.g), Shifted(in.b)}, to);
  }
  template <class To>
  void Block(const WordColumns& in, To to) const {
    Block(InTurn(in), to);
  }
#endif

 private:
  const std::uint16_t mFactor;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
