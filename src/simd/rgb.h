#pragma once

#include <cstdint>

#include "simd/lanes.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// A pixel.
template <class Sample>
struct Rgb {
  Sample r, g, b;
};

/// Says which samples a block has.
template <class Sample>
struct Of {};

#if LM_LANES
/// A block of pixels.
template <class Sample>
struct RgbLanes {
  Lanes<Sample> r, g, b;
};
#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
