#pragma once

#include "kernels/yuv/yuv_to_rgb.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// The luma of YUV as gray, by the factor and the black of the matrix that comes with the lines:
/// (factor (Y - black) + 4096) >> 13.
template <class Group_, std::size_t kSampleBytes>
struct LumaOfYuv : GraySamples<Group_, kSampleBytes> {
  using Samples = GraySamples<Group_, kSampleBytes>;

  static void Group(const SourceLines& in, std::uint8_t* out) {
    Samples::Group(in, out);
    for (std::size_t k = 0; k < Samples::kPixels; ++k) {
      out[k] = Clamp8((in.matrix->y * (out[k] - in.matrix->black) + 4096) >> 13);
    }
  }

#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t> samples) {
    // Four times as much, for a product that is shifted by 15. It is at most 956 * 9568.
    const auto factor = static_cast<std::int16_t>(read.in.matrix->y);
    const auto black = static_cast<std::int16_t>(4 * read.in.matrix->black);
    const U8 y = Samples::Block(read, samples);
    return ClampJoin(MultiplyRounded(I16(LowWords(y) >> 6) - black, factor),
                     MultiplyRounded(I16(HighWords(y) >> 6) - black, factor));
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
