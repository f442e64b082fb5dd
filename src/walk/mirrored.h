#pragma once

#include <cstdint>

namespace LmImagingLib {

/// The row or column inside an image of `count` of them, at least 2, that one outside mirrors about the edge: -1 is 1.
inline std::uint32_t Mirrored(std::int64_t at, std::uint32_t count) {
  // Narrow images are mirrored several times. A division would take as long as a block of pixels.
  const std::int64_t last = std::int64_t{count} - 1;
  while (at < 0 || at > last) at = at < 0 ? -at : 2 * last - at;
  return static_cast<std::uint32_t>(at);
}

}  // namespace LmImagingLib
