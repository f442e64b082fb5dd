#pragma once

#include <cstdint>

#include "simd/lanes.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// A pixel.
struct Rgb {
  std::uint8_t r, g, b;
};

#if LM_LANES
/// A block of pixels.
struct RgbLanes {
  U8 r, g, b;
};

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
