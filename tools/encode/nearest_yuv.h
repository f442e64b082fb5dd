#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "scene.h"

namespace LmTool {

/// Up to four neighbouring pixels that share their chroma, in samples of 16 bits; formats of fewer keep the upper ones.
struct YuvGroup {
  std::array<std::uint16_t, 4> luma;
  std::uint16_t u, v;
};

/// The YUV samples, of 8 bits, of `count` pixels (1 to 4) whose 8-bit colours, as the library decodes them, come
/// closest to the pixels.
/// @param flags  bits of `ConversionFlags`: the range and the matrix
YuvGroup NearestYuv(const Color16* pixels, std::size_t count, unsigned long flags);

}  // namespace LmTool
