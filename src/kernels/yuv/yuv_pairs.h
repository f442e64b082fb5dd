#pragma once

#include "simd/interleave.h"
#include "simd/lanes.h"
#include "simd/rgb.h"
#include "simd/strip.h"

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Half a register of pixels of YUV: a word for each, of luma in the lower byte, and of U and V. Both U and V are
/// signed, 128 less than the samples. If the model says so (`kLumaWithV`), luma is signed, too, and the upper byte of
/// its word is V; otherwise that is 0.
struct YuvPairs {
  U8 luma, uv;
};

// Samples become signed where that takes fewest steps: before they are paired, if a model wants all of them signed, or
// afterwards, if it is only the chroma.
template <class Model>
inline U8 BeforePairing(U8 samples) {
  return Model::kLumaWithV ? Signed(samples) : samples;
}
template <class Model>
inline YuvPairs AfterPairing(U8 luma, U8 uv) {
  return {luma, Model::kLumaWithV ? uv : Signed(uv)};
}

/// The colours of a register of samples, by a `Model` that makes words of halves.
template <class Model>
inline RgbLanes<std::uint8_t> ColorsOf(const SourceLines& in, const YuvPairs& low, const YuvPairs& high) {
  const auto first = Model::Words(in, low), second = Model::Words(in, high);
  return {ClampJoin(first.r, second.r), ClampJoin(first.g, second.g), ClampJoin(first.b, second.b)};
}

template <class Model>
inline RgbLanes<std::uint8_t> ColorsOf(const SourceLines& in, U8 y, U8 u, U8 v) {
  if constexpr (Model::kLumaWithV) y = Signed(y);
  u = Signed(u), v = Signed(v);
  const U8 beside = Model::kLumaWithV ? v : U8{};
  return ColorsOf<Model>(in, {ZipHalves<0>(y, beside), ZipHalves<0>(u, v)},
                         {ZipHalves<1>(y, beside), ZipHalves<1>(u, v)});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
