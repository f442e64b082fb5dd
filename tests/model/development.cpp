#include "model/development.h"

#include <algorithm>
#include <cmath>

namespace model {

namespace {

double Light(unsigned sample, unsigned bits) {
  const std::uint64_t u = sample << (16 - bits) | sample >> (2 * bits - 16);
  const std::uint64_t light = u * u / 65536 + u / 32768;
  return static_cast<double>(light);
}

unsigned Mirrored(int at, int count) {
  if (at < 0) at = -at;
  return static_cast<unsigned>(at < count ? at : 2 * (count - 1) - at);
}

}  // namespace

unsigned PlainDevelopment::LookUp(unsigned sample, unsigned channel) const {
  const double white = (1 << depth) - 1;
  const double black[] = {settings.black.red, settings.black.green, settings.black.blue};
  const double gain[] = {settings.gains.red, settings.gains.green, settings.gains.blue};
  const double light = std::clamp((sample - black[channel]) * gain[channel] / white, 0.0, 1.0);
  const bool hasMatrix = settings.matrix != LmImagingLib::kIdentityMatrix;
  return static_cast<unsigned>(
      std::lround((hasMatrix ? std::sqrt(light) : settings.tone.At(light)) * ((1U << bits) - 1)));
}

void PlainDevelopment::Finish(unsigned (&color)[3]) const {
  if (settings.matrix == LmImagingLib::kIdentityMatrix) return;
  const double light[] = {Light(color[0], bits), Light(color[1], bits), Light(color[2], bits)};
  for (unsigned row = 0; row < 3; ++row) {
    double sum = 0.5;
    for (unsigned k = 0; k < 3; ++k) sum += std::round(settings.matrix[3 * row + k] * 4096) / 4096 * light[k];
    const double linear = std::clamp(std::floor(sum), 0.0, 65535.0);
    // Bytes come from 12 bits of light where it is more than 1/16.
    const double seen = bits > 8 || linear < 4096 ? linear : std::floor(linear / 16) * 16 + 7.5;
    color[row] = static_cast<unsigned>(std::lround(settings.tone.At(seen / 65535) * ((1U << bits) - 1)));
  }
}

Words WithoutDefects(const Words& in, int width, int height, unsigned threshold) {
  Words out = in;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      unsigned least = 65535, most = 0;
      for (int dy = -2; dy <= 2; dy += 2) {
        for (int dx = -2; dx <= 2; dx += 2) {
          if (dx == 0 && dy == 0) continue;
          const unsigned s = in[Mirrored(y + dy, height) * static_cast<unsigned>(width) + Mirrored(x + dx, width)];
          least = std::min(least, s);
          most = std::max(most, s);
        }
      }
      std::uint16_t& s =
          out[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
      if (s > most + threshold) s = static_cast<std::uint16_t>(most);
      if (s + threshold < least) s = static_cast<std::uint16_t>(least);
    }
  }
  return out;
}

}  // namespace model
