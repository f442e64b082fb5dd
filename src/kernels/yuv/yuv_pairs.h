#pragma once

#include "simd/interleave.h"
#include "simd/lanes.h"
#include "simd/rgb.h"
#include "simd/strip.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Half a register of pixels of YUV: a word for each, of luma in the lower byte and V in the upper one, and of U and V.
/// All are signed, 128 less than the samples.
struct YuvPairs {
  U8 yv, uv;
};

/// The colours of a register of samples, by a `Model` that makes words of halves.
template <class Model>
inline RgbLanes<std::uint8_t> ColorsOf(const SourceLines& in, const YuvPairs& low, const YuvPairs& high) {
  const auto first = Model::Words(in, low), second = Model::Words(in, high);
  return {ClampJoin(first.r, second.r), ClampJoin(first.g, second.g), ClampJoin(first.b, second.b)};
}

template <class Model>
inline RgbLanes<std::uint8_t> ColorsOf(const SourceLines& in, U8 y, U8 u, U8 v) {
  y = Signed(y), u = Signed(u), v = Signed(v);
  return ColorsOf<Model>(in, {ZipHalves<0>(y, v), ZipHalves<0>(u, v)}, {ZipHalves<1>(y, v), ZipHalves<1>(u, v)});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
