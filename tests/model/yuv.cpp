#include <algorithm>
#include <cmath>

#include "model/groups.h"
#include "model/kernels.h"

namespace model {
namespace {

/// Factors of a matrix, in so many parts of one.
struct Matrix {
  int one, y, black, vToRed, uToGreen, vToGreen, uToBlue;
};

Matrix Rounded(double y, int black, double vToRed, double uToGreen, double vToGreen, double uToBlue) {
  const auto parts = [](double factor) { return static_cast<int>(std::lround(factor * 8192)); };
  return {8192, parts(y), black, parts(vToRed), parts(uToGreen), parts(vToGreen), parts(uToBlue)};
}

/// The system's own factors, unless flags ask for those of a standard.
Matrix MatrixOf(unsigned flags) {
  const bool full = (flags & 0x4000) != 0;
  if ((flags & 0x8000) != 0) {
    return full ? Rounded(1, 0, 1.5748, 0.187324, 0.468124, 1.8556)
                : Rounded(1.164384, 16, 1.792741, 0.213249, 0.532909, 2.112402);
  }
  return full ? Rounded(1, 0, 1.402, 0.344136, 0.714136, 1.772) : Matrix{1024, 1196, 16, 1642, 400, 832, 2064};
}

Color FromYUV(const Line& line, int y, int u, int v) {
  const Matrix m = MatrixOf(line.call.flags);
  const auto channel = [&](int chroma) {
    const int sum = (y - m.black) * m.y + chroma + m.one / 2;
    return static_cast<unsigned>(std::clamp(std::floor(static_cast<double>(sum) / m.one), 0.0, 255.0));
  };
  // Gray is what the luma alone makes of a pixel.
  const bool gray = line.stage.to.writer == Writer::LUMA;
  u = gray ? 0 : u - 128;
  v = gray ? 0 : v - 128;
  return {channel(m.vToRed * v), channel(-m.vToGreen * v - m.uToGreen * u), channel(m.uToBlue * u)};
}

std::size_t Even(std::size_t pixels) { return pixels / 2 * 2; }

/// Groups of bytes with a chroma for one pixel, or for two, whose lumas are two bytes apart.
void ConvertBytes(Line& line, std::size_t groupPixels, std::size_t y, std::size_t u, std::size_t v) {
  ConvertGroups(line, groupPixels == 2 ? Even(line.pixels) : line.pixels, groupPixels, groupPixels + 2,
                [&](const std::uint8_t* g, std::size_t p) { return FromYUV(line, g[y + 2 * p], g[u], g[v]); });
}

}  // namespace

void YUV8(Line& line) { ConvertBytes(line, 2, 0, 1, 3); }
void YUV8GEV(Line& line) { ConvertBytes(line, 2, 1, 0, 2); }
void YUV444(Line& line) { ConvertBytes(line, 1, 0, 1, 2); }
void YUV444GEV(Line& line) { ConvertBytes(line, 1, 1, 0, 2); }
void YCrCb(Line& line) { ConvertBytes(line, 1, 0, 2, 1); }

void YUV10(Line& line) {
  ConvertGroups(line, Even(line.pixels), 2, 8, [&](const std::uint8_t* g, std::size_t p) {
    const auto sample = [&](std::size_t word) {
      return static_cast<int>(line.Sample(g[2 * word] + g[2 * word + 1] * 256u));
    };
    return FromYUV(line, sample(2 * p), sample(1), sample(3));
  });
}

// Counts of 2 and 3 modulo 4 convert a whole group past the end of the line, a count of 1 modulo 4 leaves a pixel.
void YUV411(Line& line) {
  const std::size_t limit = line.pixels % 4 == 0 ? line.pixels : line.pixels - 1;
  ConvertGroups(line, limit, 4, 6, [&](const std::uint8_t* g, std::size_t p) {
    return FromYUV(line, g[p < 2 ? p + 1 : p + 2], g[0], g[3]);
  });
}

}  // namespace model
