#include "encode/nearest_yuv.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "LmImagingLib/PixelConverter.h"

namespace LmTool {

namespace {

constexpr int kScale = 1024;

// A decoder in 1024ths: L = luma (Y - black), R = L + vToR (V - 128), G = L - vToG (V - 128) - uToG (U - 128),
// B = L + uToB (U - 128), rounded and clamped to 0..255.
struct Factors {
  unsigned long flags;
  int luma, black, vToR, vToG, uToG, uToB;
};
constexpr unsigned long kFullRange = LmImagingLib::ConversionFlags::kFullRange;
constexpr unsigned long kBT709 = LmImagingLib::ConversionFlags::kBT709;
constexpr Factors kFactors[] = {{0, 1196, 16, 1642, 832, 400, 2064},  // the library's own, which are rounded
                                {kFullRange, 1024, 0, 1436, 731, 352, 1815},
                                {kBT709, 1192, 16, 1836, 546, 218, 2163},
                                {kFullRange | kBT709, 1024, 0, 1613, 479, 192, 1900}};

struct Color8 {
  int red, green, blue;
};

// The chroma's share of each channel, in 1024ths.
Color8 ChromaOf(const Factors& by, int u, int v) {
  const int cu = u - 128;
  const int cv = v - 128;
  return {by.vToR * cv, -by.vToG * cv - by.uToG * cu, by.uToB * cu};
}

long SquaredError(const Factors& by, int target, int y, int chroma) {
  const int decoded = std::clamp((by.luma * (y - by.black) + chroma + kScale / 2) >> 10, 0, 255);
  return static_cast<long>(decoded - target) * (decoded - target);
}

struct BestLuma {
  int y;
  long error;
};

// For the chroma given, the exact luma would be the mean of what the three channels ask for; where channels clamp, the
// best one lies near it, and within the range of a sample.
BestLuma FindLuma(const Factors& by, const Color8& color, const Color8& chroma) {
  constexpr int kReach = 3;
  const int wanted = (color.red + color.green + color.blue) * kScale - (chroma.red + chroma.green + chroma.blue);
  const int center = std::clamp(by.black + wanted / (3 * by.luma), 0, 255);
  BestLuma best{0, std::numeric_limits<long>::max()};
  for (int y = std::max(0, center - kReach); y <= std::min(255, center + kReach); ++y) {
    const long error = SquaredError(by, color.red, y, chroma.red) + SquaredError(by, color.green, y, chroma.green) +
                       SquaredError(by, color.blue, y, chroma.blue);
    if (error < best.error) best = {y, error};
  }
  return best;
}

std::uint16_t SampleOf(int of8Bits) { return static_cast<std::uint16_t>(of8Bits << 8); }

}  // namespace

YuvGroup NearestYuv(const Color16* pixels, std::size_t count, unsigned long flags) {
  const Factors& by = *std::find_if(std::begin(kFactors), std::end(kFactors), [flags](const Factors& factors) {
    return factors.flags == (flags & (kFullRange | kBT709));
  });
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
  const double weightR = static_cast<double>(by.vToG) / by.vToR;
  const double weightB = static_cast<double>(by.uToG) / by.uToB;
  const auto pixelCount = static_cast<double>(count);
  const double luma = (green + weightR * red + weightB * blue) / (1 + weightR + weightB) / pixelCount;
  const auto centerU = static_cast<int>(std::lround(128 + (blue / pixelCount - luma) * kScale / by.uToB));
  const auto centerV = static_cast<int>(std::lround(128 + (red / pixelCount - luma) * kScale / by.vToR));

  YuvGroup best{};
  long bestError = std::numeric_limits<long>::max();
  for (int u = std::max(0, centerU - 1); u <= std::min(255, centerU + 1); ++u) {
    for (int v = std::max(0, centerV - 1); v <= std::min(255, centerV + 1); ++v) {
      const Color8 chroma = ChromaOf(by, u, v);
      YuvGroup group{{}, SampleOf(u), SampleOf(v)};
      long error = 0;
      for (std::size_t i = 0; i < count; ++i) {
        const BestLuma found = FindLuma(by, colors[i], chroma);
        group.luma[i] = SampleOf(found.y);
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
