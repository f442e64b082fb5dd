#pragma once

#include <algorithm>

#include "formats/readout.h"
#include "simd/kernel.h"
#include "simd/strip.h"

namespace LmImagingLib {

LM_DECLARE_WIDE_KERNEL(SplitTapsKernel, SplitTaps)

/// Decodes `pairs` pairs of gray samples of a two-tap readout, some at a time, and calls `use` with neighbouring
/// samples of the line, their count, and the place of the first one: a piece of the left half and one of the right half
/// in turn.
template <class Sample, class Use>
void ForEachTapStrip(DecodeKernel<Sample>* decode, const SourceLines& in, std::size_t pairs, const Readout& readout,
                     const Use& use) {
  constexpr std::size_t kPairs = kStripPixels / 2;
  Strip<Sample> strip;
  for (std::size_t at = 0; at < pairs; at += kPairs) {
    const std::size_t count = std::min(kPairs, pairs - at);
    const Channels<Sample> samples = decode(in, 2 * at, 2 * count, {strip.red, strip.red, strip.red});
    Sample *const left = strip.green, *const right = strip.blue;
    kSplitTaps.template Of<Sample>().Active()(samples.red, count, readout.leftBackwards, readout.rightBackwards, left,
                                              right);
    const std::size_t fromEnd = pairs - at - count;
    use(left, count, readout.leftBackwards ? fromEnd : at);
    use(right, count, pairs + (readout.rightBackwards ? fromEnd : at));
  }
}

}  // namespace LmImagingLib
