#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmTool {

/// What a bit in memory holds.
struct StoredBit {
  char sample = 0;     ///< R, G, B, Y, U, V, or p for the only sample of a pixel; 0 for an unused bit
  unsigned pixel = 0;  ///< counted in the group; of shared chroma, the first pixel that it belongs to
  unsigned bit = 0;    ///< of the sample, 0 for its lowest one
};

/// How the pixels that are stored together lie in memory.
struct LayoutBits {
  using Byte = std::array<StoredBit, 8>;  ///< from bit 0 on

  std::size_t pixels;                     ///< the fewest that fill whole bytes
  std::vector<std::vector<Byte>> planes;  ///< one for layouts that interleave their samples
};

/// Where the bits of a registered type lie, found by encoding one after the other.
LayoutBits BitsOf(const LmImagingLib::PixelTypeID& type);

/// The bits that a sample has: of 'R', 'Y' and so on; 0 of a sample that the layout lacks.
unsigned BitsOfSample(const LayoutBits& layout, char sample);

/// Which pixels of a line of eight come first, second and so on: not in their order where a sensor has several taps.
std::vector<std::size_t> ReadoutOf(const LmImagingLib::PixelTypeID& type);

}  // namespace LmTool
