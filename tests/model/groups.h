#pragma once

#include "model/line.h"

namespace model {

/// The samples of a group packed for GigE Vision: upper 8 bits of the first, the low bits of both in halves of a byte,
/// upper 8 bits of the second.
inline unsigned FirstGEV(const std::uint8_t* group, unsigned depth) {
  const unsigned low = depth - 8;
  return unsigned{group[0]} << low | (group[1] & ((1u << low) - 1));
}
inline unsigned SecondGEV(const std::uint8_t* group, unsigned depth) {
  const unsigned low = depth - 8;
  return unsigned{group[2]} << low | (group[1] >> 4 & ((1u << low) - 1));
}

/// Bits lowest to lowest + count - 1 of a little-endian number.
inline unsigned Bits(const std::uint8_t* number, std::size_t lowest, std::size_t count) {
  unsigned value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t bit = lowest + i;
    value |= (number[bit / 8] >> bit % 8 & 1u) << i;
  }
  return value;
}

/// Calls `convert` with the bytes of each group of `groupPixels` pixels that has one to convert, its first pixel, its
/// pixels to convert and all that it has. Bytes begin with each group; a group that the line ends within has its bits
/// up to the next byte.
template <typename Convert>
void ForEachGroup(Line& line, std::size_t groupPixels, Convert convert) {
  const std::size_t bits = line.stage.sourceBits;
  for (std::size_t i = 0; i < line.pixels; i += groupPixels) {
    const std::size_t present = std::min<std::size_t>(groupPixels, line.call.sourceWidth - i);
    const std::uint8_t* group = line.Read(static_cast<std::ptrdiff_t>(i * bits / 8), (present * bits + 7) / 8);
    convert(group, i, std::min(groupPixels, line.pixels - i), present);
  }
}

/// Converts groups of `groupPixels` pixels in `groupBytes` bytes for as long as a group begins before `limit`.
/// @param decode  called with the group's bytes and the number of the pixel in it
template <typename Decode>
void ConvertGroups(Line& line, std::size_t limit, std::size_t groupPixels, std::size_t groupBytes, Decode decode) {
  for (std::size_t i = 0; i < limit; i += groupPixels) {
    const std::uint8_t* group = line.Read(static_cast<std::ptrdiff_t>(i / groupPixels * groupBytes), groupBytes);
    for (std::size_t p = 0; p < groupPixels; ++p) line.StoreFiltered(i + p, decode(group, p));
  }
}

}  // namespace model
