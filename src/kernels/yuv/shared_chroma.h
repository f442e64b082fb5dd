#pragma once

#include "kernels/yuv/yuv_to_rgb.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// YUV whose pixels share their chroma by twos or fours, in samples of `kSampleBytes` bytes.
template <class Group_, std::size_t kSampleBytes, class Model>
struct SharedChroma : ColorSamples<Group_, kSampleBytes, Model> {
#if LM_LANES
  // Words of the first (0) or second (1) pixel of each pair: luma in the upper byte, U or V in the lower one.
  template <std::size_t kSecond>
  struct WordIndex {
    static constexpr std::size_t At(std::size_t lane) {
      const std::size_t pixel = lane / 2 * 2 + kSecond;
      const std::size_t channel = lane % 2 != 0 ? 0 : 1 + kSecond;
      return pixel / Group_::kPixels * Group_::kSamples + Group_::kAt[channel][pixel % Group_::kPixels];
    }
  };

  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    constexpr std::size_t kCount = kLanes / Group_::kPixels * Group_::kSamples;
    U8 window[2];
    LoadSamples<kSampleBytes>(read, 0, 0, kCount, window);
    const WordBytes yu = PickWords<WordIndex<0>>(window);
    const WordBytes yv = PickWords<WordIndex<1>>(window);
    return Model::Color(read.in, yu.high, yv.high, yu.low, yv.low);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
