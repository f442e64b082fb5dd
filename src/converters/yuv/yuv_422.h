#pragma once

#include "converters/yuv/yuv_to_rgb.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// YUV 4:2:2 in samples of `kSampleBytes` bytes: two pixels in four samples.
template <class Group_, std::size_t kSampleBytes>
struct Yuv422 : ColorSamples<Group_, kSampleBytes, Yuv> {
#if LM_LANES
  // Words of the samples 0 and 1 of each group, or of 2 and 3.
  template <std::size_t kPair>
  struct PairIndex {
    static constexpr std::size_t At(std::size_t lane) { return lane / 2 * 4 + 2 * kPair + lane % 2; }
  };

  // Sample `kSample` of each group, from the words that hold it.
  template <std::size_t kSample>
  static I16 SampleOf(const U16 (&words)[2]) {
    const U16 pair = words[kSample / 2];
    return I16(kSample % 2 == 0 ? pair & 0xFF : pair >> 8);
  }

  template <class Reader>
  static RgbLanes Block(const Reader& read) {
    U8 window[2];
    LoadSamples<kSampleBytes>(read, 0, 0, 2 * kLanes, window);
    const U16 words[2] = {U16(Pick<PairIndex<0>>(window)), U16(Pick<PairIndex<1>>(window))};
    return Yuv::Color(SampleOf<Group_::kAt[0][0]>(words), SampleOf<Group_::kAt[0][1]>(words),
                      SampleOf<Group_::kAt[1][0]>(words), SampleOf<Group_::kAt[2][0]>(words));
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
