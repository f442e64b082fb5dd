#include "filter/tone_lines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace LmImagingLib {

namespace {

constexpr std::uint32_t kDarkEntries = 4096, kScale = 16;

/// What a line may be at an entry: from the least light of it on at least `low`, up to the most one below `high`.
struct Bounds {
  std::uint32_t least, most;  // scaled light
  double low, high;           // results
};

// The bounds of all entries. A line may be the result before where the entry is near behind its rise, and the result
// where the next rise is not so far away that it seems to be near behind.
std::vector<Bounds> BoundsOf(const std::vector<std::uint8_t>& table) {
  const auto end = static_cast<std::uint32_t>(table.size());
  std::vector<Bounds> bounds(end);
  std::uint32_t rise = 0;
  for (std::uint32_t i = 0; i < end; ++i) {
    if (i > 0 && table[i] != table[i - 1]) rise = i;
    const std::uint32_t light = i < kDarkEntries ? i * kScale : (i - 3840) * kScale;
    const bool mayBeLess = table[i] > 0 && i - rise < ToneLines::kReach;
    bounds[i] = {light, i < kDarkEntries ? light : light + kScale - 1, table[i] - (mayBeLess ? 1.0 : 0.0), 0};
  }
  std::uint32_t next = end;
  for (std::uint32_t i = end; i-- > 0;) {
    if (i + 1 < end && table[i + 1] != table[i]) next = i + 1;
    const bool mayBeThis = next - i <= 256 - ToneLines::kReach;
    bounds[i].high = table[i] + (mayBeThis ? 1.0 : 0.0);
  }
  return bounds;
}

/// The intercepts of lines of some slope within the bounds: none where there is no room.
struct Intercepts {
  double least = -std::numeric_limits<double>::infinity(), most = std::numeric_limits<double>::infinity();

  double Size() const { return most - least; }
};

Intercepts InterceptsOf(const std::vector<Bounds>& bounds, std::uint32_t begin, std::uint32_t end, double slope) {
  Intercepts room;
  for (std::uint32_t i = begin; i < end; ++i) {
    room.least = std::max(room.least, bounds[i].low - slope * bounds[i].least);
    room.most = std::min(room.most, bounds[i].high - slope * bounds[i].most);
  }
  return room;
}

// The line with the most room. That is less to either side of its slope.
void FitLine(const std::vector<Bounds>& bounds, std::uint32_t begin, std::uint32_t end, std::uint16_t& base,
             std::uint16_t& slope) {
  std::uint32_t low = 0, high = 65535;
  const auto roomAt = [&](std::uint32_t factor) { return InterceptsOf(bounds, begin, end, factor / (64.0 * 65536)); };
  while (low < high) {
    const std::uint32_t middle = (low + high) / 2;
    if (roomAt(middle).Size() < roomAt(middle + 1).Size()) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  const Intercepts room = roomAt(low);
  slope = static_cast<std::uint16_t>(low);
  base = static_cast<std::uint16_t>(std::lround((room.least + room.most) / 2 * 64));
}

// The result of some light, as kernels compute it.
unsigned ToneOf(const ToneLines& lines, std::uint32_t light) {
  if (lines.hasFirst && light < sizeof lines.first) return lines.first[light];
  const bool isDark = light < kDarkEntries;
  const std::uint32_t scaled = isDark ? light * kScale : light, line = scaled / ToneLines::kLight;
  const auto by64 =
      static_cast<std::uint16_t>(lines.base[isDark ? 0 : 1][line] + (lines.slope[isDark ? 0 : 1][line] * scaled >> 16));
  const auto tone = static_cast<std::uint8_t>(by64 >> 6);
  const auto after = static_cast<std::uint8_t>((scaled >> 4) - lines.next[tone]);
  return static_cast<std::uint8_t>(tone + (after < ToneLines::kReach ? 1 : 0));
}

bool Equals(const ToneLines& lines, const std::vector<std::uint8_t>& table) {
  for (std::uint32_t light = 0; light < 65536; ++light) {
    if (ToneOf(lines, light) != table[ToneIndex(light)]) return false;
  }
  return true;
}

}  // namespace

std::optional<ToneLines> FindToneLines(const std::vector<std::uint8_t>& table) {
  if (!std::is_sorted(table.begin(), table.end())) return std::nullopt;
  ToneLines lines{};
  for (std::size_t k = 0; k < sizeof lines.next; ++k) {
    lines.next[k] = static_cast<std::uint8_t>(std::upper_bound(table.begin(), table.end(), k) - table.begin());
  }
  std::copy_n(table.begin(), sizeof lines.first, lines.first);
  const std::vector<Bounds> bounds = BoundsOf(table);
  for (std::uint32_t line = 0; line < 32; ++line) {
    const std::uint32_t dark = line * ToneLines::kLight / kScale, entries = ToneLines::kLight / kScale;
    FitLine(bounds, dark, dark + entries, lines.base[0][line], lines.slope[0][line]);
    if (line < 2) continue;
    FitLine(bounds, 3840 + dark, 3840 + dark + entries, lines.base[1][line], lines.slope[1][line]);
  }
  if (Equals(lines, table)) return lines;
  lines.hasFirst = true;
  FitLine(bounds, sizeof lines.first, ToneLines::kLight / kScale, lines.base[0][0], lines.slope[0][0]);
  if (Equals(lines, table)) return lines;
  return std::nullopt;
}

}  // namespace LmImagingLib
