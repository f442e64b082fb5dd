#include "code_length.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace LmPage {

namespace {

// The samples of one channel of a tile, row by row.
struct Plane {
  std::size_t width, height;
  std::vector<std::int32_t> samples;

  std::int32_t At(std::size_t x, std::size_t y) const { return samples[y * width + x]; }
};

// Bits that are 0 everywhere are no part of a sample.
Plane Read(const FrameSamples& frame, const Channel& channel, const Tile& tile) {
  Plane plane{tile.width / channel.step, tile.height, {}};
  plane.samples.resize(plane.width * plane.height);
  for (std::size_t y = 0; y < plane.height; ++y) {
    frame.Read(channel, tile.x / channel.step, tile.y + y, plane.width, &plane.samples[y * plane.width]);
  }
  for (std::int32_t& sample : plane.samples) sample >>= static_cast<int>(channel.zeros);
  return plane;
}

Plane Difference(const Plane& a, const Plane& b) {
  Plane result = a;
  for (std::size_t i = 0; i < a.samples.size(); ++i) result.samples[i] -= b.samples[i];
  return result;
}

// The entropy of a two-sided geometric distribution: of its magnitude, whose mean is given, and of the sign.
double Entropy(double mean) {
  if (mean <= 0) return 0;
  return (1 + mean) * std::log2(1 + mean) - mean * std::log2(mean) + mean / (1 + mean);
}

double MeanChange(const Plane& plane, std::size_t right, std::size_t down) {
  std::int64_t sum = 0;
  for (std::size_t y = down; y < plane.height; ++y) {
    for (std::size_t x = right; x < plane.width; ++x) sum += std::abs(plane.At(x, y) - plane.At(x - right, y - down));
  }
  const std::size_t count = (plane.width - right) * (plane.height - down);
  return static_cast<double>(sum) / static_cast<double>(count);
}

// Bits a sample; noise costs as many as a sample has.
double Bits(const Plane& plane, unsigned bits, std::size_t step) {
  const double most = bits;
  return (std::min(most, Entropy(MeanChange(plane, step, 0))) + std::min(most, Entropy(MeanChange(plane, 0, step)))) /
         2;
}

// How much the means of even and odd columns differ in a row of a mosaic, in standard errors: about 0.8 in pictures
// without one.
double Alternation(const Plane& plane) {
  double result = 0;
  for (std::size_t parity = 0; parity < 2; ++parity) {
    double sum = 0, squares = 0, count = 0;
    for (std::size_t y = parity; y < plane.height; y += 2) {
      for (std::size_t x = 0; x + 1 < plane.width; x += 2, ++count) {
        const double step = plane.At(x, y) - plane.At(x + 1, y);
        sum += step;
        squares += step * step;
      }
    }
    const double error = std::sqrt(std::max(squares - sum * sum / count, 1.0));
    result = std::max(result, std::abs(sum) / error);
  }
  return result;
}

// Bits of a tile; adds those of each channel to `ofChannels`.
double Bits(const FrameSamples& frame, bool isMosaic, const Tile& tile, std::vector<double>& ofChannels,
            double& alternation) {
  const std::vector<Channel>& channels = frame.Map().channels;
  std::vector<Plane> planes;
  double apart = 0;
  for (std::size_t i = 0; i < channels.size(); ++i) {
    planes.push_back(Read(frame, channels[i], tile));
    const double bits = Bits(planes[i], channels[i].bits, isMosaic ? 2 : 1);
    ofChannels[i] += bits / channels[i].bits;
    apart += bits * static_cast<double>(planes[i].samples.size());
    if (!isMosaic && channels.size() == 1) alternation += Alternation(planes[i]);
  }
  // Channels of a pixel change together, so encoders encode their differences to one of them.
  const auto base =
      std::find_if(channels.begin(), channels.end(), [](const Channel& c) { return c.name == 'G' || c.name == 'Y'; });
  if (base == channels.end() || channels.size() != 3 || channels.back().step != 1) return apart;
  const auto at = static_cast<std::size_t>(base - channels.begin());
  double together = 0;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    const bool isComparable = i != at && channels[i].bits == base->bits;
    together += isComparable ? Bits(Difference(planes[i], planes[at]), base->bits + 1, 1)
                             : Bits(planes[i], channels[i].bits, 1);
  }
  return std::min(apart, together * static_cast<double>(tile.width * tile.height));
}

// Cameras deliver no channel of noise beside one of a picture; readings that mix up bits do.
double NoiseAlone(const std::vector<double>& ofChannels, double tiles) {
  constexpr double kNoise = 0.93, kPicture = 0.8, kPenalty = 0.3;
  const auto [least, most] = std::minmax_element(ofChannels.begin(), ofChannels.end());
  return *most > kNoise * tiles && *least < kPicture * tiles ? kPenalty : 0;
}

}  // namespace

double CodeLength(const FrameSamples& frame, bool isMosaic, const std::vector<Tile>& tiles) {
  constexpr double kAlternates = 3, kPenalty = 0.15;
  const SampleMap& map = frame.Map();
  std::vector<double> ofChannels(map.channels.size());
  double bits = 0, bytes = 0, alternation = 0, textured = 0;
  for (const Tile& tile : tiles) {
    const double ofTile = Bits(frame, isMosaic, tile, ofChannels, alternation);
    bits += ofTile;
    if (ofTile > 0) ++textured;
    bytes += static_cast<double>(tile.width * tile.height * map.bytes * map.planes) / static_cast<double>(map.pixels);
  }
  const bool alternates = alternation > kAlternates * static_cast<double>(tiles.size());
  return bits / bytes + NoiseAlone(ofChannels, textured) + (alternates ? kPenalty : 0);
}

std::vector<Tile> SpreadTiles(const FrameSamples& frame, std::size_t count, std::size_t width, std::size_t height) {
  const std::size_t grain = std::max<std::size_t>(2, frame.Map().pixels);
  const Tile tile{0, 0, std::min(width, frame.Width()) / grain * grain, std::min(height, frame.Height())};
  // Multiples of two irrational numbers are spread over a square without repeating a row or a column.
  constexpr double kAcross = 0.7548776662466927, kDown = 0.5698402909980532;
  std::vector<Tile> tiles(count, tile);
  for (std::size_t i = 0; i < count; ++i) {
    const double x = std::fmod(0.5 + kAcross * static_cast<double>(i), 1);
    const double y = std::fmod(0.5 + kDown * static_cast<double>(i), 1);
    tiles[i].x = static_cast<std::size_t>(x * static_cast<double>(frame.Width() - tile.width)) / grain * grain;
    tiles[i].y = static_cast<std::size_t>(y * static_cast<double>(frame.Height() - tile.height)) / 2 * 2;
  }
  return tiles;
}

}  // namespace LmPage
