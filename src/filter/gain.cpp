#include "filter/gain.h"

#include <algorithm>
#include <cstdint>

namespace LmImagingLib {

std::optional<Gain> FindGain(const unsigned char* table) {
  if (table[0] != 0) return std::nullopt;
  // Entry i is i * product >> 16: each entry leaves a range of products. Clamped entries have no upper bound.
  std::uint32_t least = 0;
  std::uint32_t most = 0xFFFF << 7;
  for (std::uint32_t i = 1; i < 256; ++i) {
    const std::uint32_t entry = table[i];
    least = std::max(least, ((entry << 16) + i - 1) / i);
    if (entry != 255) most = std::min(most, (((entry + 1) << 16) - 1) / i);
  }
  for (unsigned shift = 0; shift <= 7; ++shift) {
    const std::uint32_t factor = (least + (1U << shift) - 1) >> shift;
    if (factor <= 0xFFFF && factor << shift <= most) {
      return Gain{static_cast<std::uint16_t>(factor), static_cast<std::uint16_t>(shift)};
    }
  }
  return std::nullopt;
}

std::optional<WideGain> FindWideGain(const std::vector<std::uint16_t>& table, unsigned depth) {
  if (table[0] != 0) return std::nullopt;
  const auto up = static_cast<std::uint16_t>(16 - depth);
  const std::uint64_t white = table.size() - 1;
  // Entry i is (i << up) * factor >> 32: each entry leaves a range of factors. Clamped entries have no upper bound.
  // What the factor of samples of 16 bits has above 32 bits is the whole part of the gain.
  std::uint64_t least = 0;
  std::uint64_t most = up == 0 ? 0xFFFFFFFFFFFF : 0xFFFFFFFF;
  for (std::size_t i = 1; i <= white; ++i) {
    const std::uint64_t entry = table[i], x = std::uint64_t{i} << up;
    least = std::max(least, ((entry << 32) + x - 1) / x);
    if (entry != white) most = std::min(most, (((entry + 1) << 32) - 1) / x);
  }
  if (least > most) return std::nullopt;
  return WideGain{static_cast<std::uint32_t>(least), up, static_cast<std::uint16_t>(least >> 32)};
}

}  // namespace LmImagingLib
