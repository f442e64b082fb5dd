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

/// The same as a kernel. Where the matrix leaves luma as it is, samples are only collected.
template <class Group_, std::size_t kSampleBytes>
Channels<std::uint8_t> DecodeLuma(const SourceLines& in, std::size_t first, std::size_t count,
                                  const Room<std::uint8_t>& room) {
  if (in.matrix->y != 8192 || in.matrix->black != 0) {
    return Decoder<LumaOfYuv<Group_, kSampleBytes>, std::uint8_t>(0)(in, first, count, room);
  }
  if constexpr (kSampleBytes == 1 && Group_::kPixels == 2 && Group_::kSamples == 4) {
    // Every other byte: the lower or the upper ones of words, which takes fewer shuffles.
    static_assert(Group_::kAt[0][1] == Group_::kAt[0][0] + 2);
    SourceLines words = in;
    words.shift = Group_::kAt[0][0] == 0 ? 0 : 8;
    words.mask = 0xFF;
    return Decoder<EveryOtherByte<Group_::kAt[0][0]>, std::uint8_t>(0)(words, first, count, room);
  } else {
    return Decoder<GraySamples<Group_, kSampleBytes>, std::uint8_t>(0)(in, first, count, room);
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
