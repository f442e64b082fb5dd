#include "encode/nearest_yuv.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace LmTool {

namespace {

// The library's decoder, in 1024ths: L = 1196 (Y - 16), R = L + 1642 (V - 128), G = L - 832 (V - 128) - 400 (U - 128),
// B = L + 2064 (U - 128), rounded and clamped to 0..255.
constexpr int kScale = 1024;
constexpr int kLuma = 1196;
constexpr int kVtoR = 1642;
constexpr int kVtoG = 832;
constexpr int kUtoG = 400;
constexpr int kUtoB = 2064;

struct Color8 {
  int red, green, blue;
};

// The chroma's share of each channel, in 1024ths.
Color8 ChromaOf(int u, int v) {
  const int cu = u - 128;
  const int cv = v - 128;
  return {kVtoR * cv, -kVtoG * cv - kUtoG * cu, kUtoB * cu};
}

long SquaredError(int target, int y, int chroma) {
  const int decoded = std::clamp((kLuma * (y - 16) + chroma + kScale / 2) >> 10, 0, 255);
  return static_cast<long>(decoded - target) * (decoded - target);
}

struct BestLuma {
  int y;
  long error;
};

// For the chroma given, the exact luma would be the mean of what the three channels ask for; where channels clamp, the
// best one lies near it, and within the range of a sample.
BestLuma FindLuma(const Color8& color, const Color8& chroma) {
  constexpr int kReach = 3;
  const int wanted = (color.red + color.green + color.blue) * kScale - (chroma.red + chroma.green + chroma.blue);
  const int center = std::clamp(16 + wanted / (3 * kLuma), 0, 255);
  BestLuma best{0, std::numeric_limits<long>::max()};
  for (int y = std::max(0, center - kReach); y <= std::min(255, center + kReach); ++y) {
    const long error = SquaredError(color.red, y, chroma.red) + SquaredError(color.green, y, chroma.green) +
                       SquaredError(color.blue, y, chroma.blue);
    if (error < best.error) best = {y, error};
  }
  return best;
}

std::uint16_t Sample(int of8Bits) { return static_cast<std::uint16_t>(of8Bits << 8); }

}  // namespace

YuvGroup NearestYuv(const Color16* pixels, std::size_t count) {
  std::array<Color8, 4> colors{};
  double red = 0;
  double green = 0;
  double blue = 0;
  for (std::size_t i = 0; i < count; ++i) {
    colors[i] = {pixels[i].red >> 8, pixels[i].green >> 8, pixels[i].blue >> 8};
    red += colors[i].red;
    green += colors[i].green;
    blue += colors[i].blue;
  }
  // The decoder's equations solved for the mean colour: G plus R and B, weighted so that the chroma cancels, is L.
  const double weightR = static_cast<double>(kVtoG) / kVtoR;
  const double weightB = static_cast<double>(kUtoG) / kUtoB;
  const auto pixelCount = static_cast<double>(count);
  const double luma = (green + weightR * red + weightB * blue) / (1 + weightR + weightB) / pixelCount;
  const auto centerU = static_cast<int>(std::lround(128 + (blue / pixelCount - luma) * kScale / kUtoB));
  const auto centerV = static_cast<int>(std::lround(128 + (red / pixelCount - luma) * kScale / kVtoR));

  YuvGroup best{};
  long bestError = std::numeric_limits<long>::max();
  for (int u = std::max(0, centerU - 1); u <= std::min(255, centerU + 1); ++u) {
    for (int v = std::max(0, centerV - 1); v <= std::min(255, centerV + 1); ++v) {
      const Color8 chroma = ChromaOf(u, v);
      YuvGroup group{{}, Sample(u), Sample(v)};
      long error = 0;
      for (std::size_t i = 0; i < count; ++i) {
        const BestLuma found = FindLuma(colors[i], chroma);
        group.luma[i] = Sample(found.y);
        error += found.error;
      }
      if (error < bestError) {
        best = group;
        bestError = error;
      }
    }
  }
  return best;
}

}  // namespace LmTool
