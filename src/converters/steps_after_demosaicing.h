#pragma once

#include "converters/line_converter.h"

namespace LmImagingLib {

/// The bits of the words that are demosaiced, of a source of `depth` bits: more where a curve is looked up before.
std::uint32_t DepthOfRows(const Frame& frame, std::uint32_t depth, const Writer& writer);

/// The steps of a pixel after it got its colours from samples of bytes or of words. `decode` is left to the caller.
template <class Sample>
StripSteps<Sample> StepsAfterDemosaicing(const Frame& frame, std::uint32_t depth, const Writer& writer);

/// How such samples get into words.
template <class Sample>
Fit FitAfterDemosaicing(const Frame& frame, std::uint32_t depth, const Writer& writer);

}  // namespace LmImagingLib
