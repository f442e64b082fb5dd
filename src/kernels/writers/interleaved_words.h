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
    const std::uint16_t words[4] = {kFirst == First::kRed ? pixel.r : pixel.b, pixel.g,
                                    kFirst == First::kRed ? pixel.b : pixel.r, 0};
    std::memcpy(to, words, kBytes);
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

/// Words of all their bits, fitted to the destination, as the writer of a conversion without strips.
template <First kFirst, std::size_t kPixelWords>
class FittedWords : public InterleavedWords<kFirst, kPixelWords> {
  using Words = InterleavedWords<kFirst, kPixelWords>;

 public:
  FittedWords(const TargetLine& target, Site /*site*/) : mFit(target.fit) {}

  void Pixel(const Rgb<std::uint16_t>& pixel, std::uint8_t* to) const {
    Words::Pixel({Fitted(pixel.r, mFit), Fitted(pixel.g, mFit), Fitted(pixel.b, mFit)}, to);
  }

#if LM_LANES
  template <class To>
  void Block(const RgbLanes<std::uint16_t>& in, To to) const {
    const FitLanes fit(mFit);
    Words::Block({fit(in.r), fit(in.g), fit(in.b)}, to);
  }
  template <class To>
  void Block(const WordColumns& in, To to) const {
    Block(InTurn(in), to);
  }
#endif

 private:
  const Fit mFit;
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
