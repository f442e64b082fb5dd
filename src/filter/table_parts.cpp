#include "filter/table_parts.h"

#include <algorithm>

namespace LmImagingLib {

namespace {

// False if the entries of a piece fall, or rise more than twice.
bool Fold(const std::uint8_t* entries, std::uint32_t count, std::uint8_t& least, std::uint8_t& rises) {
  least = static_cast<std::uint8_t>(entries[0] - 2);
  rises = 0;
  unsigned found = 0;
  for (std::uint32_t k = 1; k < count; ++k) {
    if (entries[k] < entries[k - 1]) return false;
    for (unsigned by = entries[k] - entries[k - 1]; by != 0; --by) {
      if (++found > 2) return false;
      ++least;
      rises = static_cast<std::uint8_t>(unsigned{rises} << 4 | k);
    }
  }
  return true;
}

// False if the three entries after the first are less, or too much more for their bits.
bool FoldFour(const std::uint8_t* entries, std::uint8_t& least, std::uint8_t& rises) {
  const int first = entries[1] - entries[0], second = entries[2] - entries[0], third = entries[3] - entries[0];
  if (first < 0 || first > 3 || second < 0 || second > 7 || third < 0 || third > 7) return false;
  least = entries[0];
  rises = static_cast<std::uint8_t>(first | second << 2 | third << 5);
  return true;
}

}  // namespace

// The window begins where four entries rise too fast first.
std::optional<SampleParts> FindSampleParts(const std::vector<std::uint8_t>& table) {
  constexpr std::size_t kDark = 1024;
  SampleParts parts{};
  std::optional<std::size_t> window;
  for (std::size_t i = 0; i < std::min(table.size(), kDark); i += 4) {
    if (FoldFour(&table[i], parts.least[i / 4], parts.rises[i / 4])) continue;
    if (!window) window = i / 64;
    if (i / 64 != *window) return std::nullopt;
  }
  for (std::size_t i = kDark; i < table.size(); i += 16) {
    const std::size_t at = SampleParts::kBright + i / 16;
    if (!Fold(&table[i], 16, parts.least[at], parts.rises[at])) return std::nullopt;
  }
  const std::size_t begin = window.value_or(0) * 64;
  std::copy_n(&table[begin], sizeof parts.window, parts.window);
  parts.windowPiece = static_cast<std::uint8_t>(begin / 4);
  return parts;
}

}  // namespace LmImagingLib
