#pragma once

#include "model/line.h"

namespace model {

/// The samples of a group packed for GigE Vision: upper 8 bits of the first, the low bits of both in halves of a byte,
/// upper 8 bits of the second.
inline unsigned FirstGEV(const std::uint8_t* group, unsigned depth) {
  const unsigned low = depth - 8;
  return group[0] << low | (group[1] & ((1u << low) - 1));
}
inline unsigned SecondGEV(const std::uint8_t* group, unsigned depth) {
  const unsigned low = depth - 8;
  return group[2] << low | (group[1] >> 4 & ((1u << low) - 1));
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
