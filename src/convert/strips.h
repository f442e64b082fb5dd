#pragma once

#include "simd/strip.h"

namespace LmImagingLib {

class RGBFilter;
struct Writer;

/// The steps of a line: decode, look up, store.
struct StripSteps {
  DecodeKernel* decode;
  std::uint32_t groupPixels;  ///< pixels that the source decodes together
  bool plain;                 ///< whether the source holds its channels as plain bytes
  const RGBFilter* filter;    ///< null where the source is never filtered
  const Writer& writer;

  /// Whether there is a filter that changes anything.
  bool LooksUp() const;
};

/// Converts `count` pixels, whole groups of the source, from the beginning of `in` to pixel `first` of each target.
/// @param targetCount  lines that receive the same pixels
void ConvertStrips(const StripSteps& steps, const SourceLines& in, std::size_t count, const TargetLine* targets,
                   std::size_t targetCount, std::size_t first);

/// Converts the first `stored` pixels of a group of `decoded`; `steps.decode` is meant to be a scalar kernel.
void ConvertPartOfGroup(const StripSteps& steps, const SourceLines& in, std::size_t decoded, std::size_t stored,
                        const TargetLine* targets, std::size_t targetCount, std::size_t first);

/// Converts `pairs` pairs of gray samples of a two-tap readout; the first samples of the pairs make the left half of
/// the target, the second ones the right half.
void ConvertTapStrips(const StripSteps& steps, const SourceLines& in, std::size_t pairs, const TargetLine& target,
                      bool leftBackwards, bool rightBackwards);

}  // namespace LmImagingLib
