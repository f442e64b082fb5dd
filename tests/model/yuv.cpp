#include "model/groups.h"
#include "model/kernels.h"

namespace model {
namespace {

Color FromYUV(int y, int u, int v) {
  const auto channel = [&](int chroma) {
    const int sum = y * 1196 - 19136 + chroma + 512;
    const int rounded = sum >= 0 ? sum / 1024 : -((-sum + 1023) / 1024);
    return static_cast<unsigned>(std::clamp(rounded, 0, 255));
  };
  u -= 128;
  v -= 128;
  return {channel(1642 * v), channel(-832 * v - 400 * u), channel(2064 * u)};
}

std::size_t Even(std::size_t pixels) { return pixels / 2 * 2; }

}  // namespace

void YUV8(Line& line) {
  ConvertGroups(line, Even(line.pixels), 2, 4,
                [](const std::uint8_t* g, std::size_t p) { return FromYUV(g[2 * p], g[1], g[3]); });
}

void YUV8GEV(Line& line) {
  ConvertGroups(line, Even(line.pixels), 2, 4,
                [](const std::uint8_t* g, std::size_t p) { return FromYUV(g[2 * p + 1], g[0], g[2]); });
}

void YUV10(Line& line) {
  ConvertGroups(line, Even(line.pixels), 2, 8, [&](const std::uint8_t* g, std::size_t p) {
    const auto sample = [&](std::size_t word) {
      return (g[2 * word] + g[2 * word + 1] * 256) >> line.stage.shift & 0xFF;
    };
    return FromYUV(sample(2 * p), sample(1), sample(3));
  });
}

void YUV444(Line& line) {
  ConvertGroups(line, line.pixels, 1, 3, [](const std::uint8_t* g, std::size_t) { return FromYUV(g[0], g[1], g[2]); });
}

void YUV444GEV(Line& line) {
  ConvertGroups(line, line.pixels, 1, 3, [](const std::uint8_t* g, std::size_t) { return FromYUV(g[1], g[0], g[2]); });
}

void YCrCb(Line& line) {
  ConvertGroups(line, line.pixels, 1, 3, [](const std::uint8_t* g, std::size_t) { return FromYUV(g[0], g[2], g[1]); });
}

// Counts of 2 and 3 modulo 4 convert a whole group past the end of the line, a count of 1 modulo 4 leaves a pixel.
void YUV411(Line& line) {
  const std::size_t limit = line.pixels % 4 == 0 ? line.pixels : line.pixels - 1;
  ConvertGroups(line, limit, 4, 6,
                [](const std::uint8_t* g, std::size_t p) { return FromYUV(g[p < 2 ? p + 1 : p + 2], g[0], g[3]); });
}

}  // namespace model
