#include "filter/table_parts.h"

#include <algorithm>

namespace LmImagingLib {

namespace {

/// Pieces of as much light each.
struct Zone {
  std::uint32_t begin, end;  // light
  std::uint32_t light, entries;
  std::size_t at;
};

constexpr Zone kZones[] = {{0, 4096, 16, 16, ToneParts::kDark},
                           {4096, 16384, 128, 8, ToneParts::kMiddle},
                           {16384, 65536, 256, 16, ToneParts::kBright}};

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
      rises = static_cast<std::uint8_t>(rises << 4 | k);
    }
  }
  return true;
}

}  // namespace

std::optional<ToneParts> FindToneParts(const std::vector<std::uint8_t>& table) {
  ToneParts parts{};
  std::copy_n(table.begin(), sizeof parts.first, parts.first);
  for (const Zone& zone : kZones) {
    for (std::uint32_t light = zone.begin; light < zone.end; light += zone.light) {
      const std::size_t at = zone.at + light / zone.light;
      const bool folded = Fold(&table[ToneIndex(light)], zone.entries, parts.least[at], parts.rises[at]);
      if (!folded && light >= sizeof parts.first) return std::nullopt;
    }
  }
  return parts;
}

}  // namespace LmImagingLib
