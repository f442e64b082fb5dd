#include "color_order.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "LmImagingLib/PixelConverter.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

constexpr std::size_t kProbes = 160;  // cells or samples across and down

struct Statistics {
  double mean, deviation;  // of all samples; 1 is white
};

Statistics Measure(const FrameSamples& frame, const Channel& channel) {
  const double white = std::ldexp(1.0, static_cast<int>(channel.bits)) - 1;
  const std::size_t width = frame.Width() / channel.step;
  double sum = 0, squares = 0;
  for (std::size_t i = 0; i < kProbes * kProbes; ++i) {
    const double sample =
        frame.At(channel, (i % kProbes) * width / kProbes, (i / kProbes) * frame.Height() / kProbes) / white;
    sum += sample;
    squares += sample * sample;
  }
  const double mean = sum / (kProbes * kProbes);
  return {mean, std::sqrt(std::max(0.0, squares / (kProbes * kProbes) - mean * mean))};
}

using Cell = std::array<double, 4>;  // samples, row by row

// Groups of kNear neighbouring cells, spread over the frame.
constexpr std::size_t kNear = 8;

std::vector<Cell> CellsOf(const FrameSamples& frame) {
  const Channel& channel = frame.Map().channels[0];
  const std::size_t across = frame.Width() / 2, down = frame.Height() / 2;
  std::vector<Cell> cells(kProbes * kProbes);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t group = i % kProbes / kNear, groups = kProbes / kNear;
    const std::size_t x = std::min(across - 1, group * across / groups + i % kNear);
    const std::size_t y = i / kProbes * down / kProbes;
    for (std::size_t k = 0; k < 4; ++k) cells[i][k] = frame.At(channel, 2 * x + k % 2, 2 * y + k / 2);
  }
  return cells;
}

double Sum(const Cell& cell) { return cell[0] + cell[1] + cell[2] + cell[3]; }

Cell MeanOf(const Cell* first, const Cell* end) {
  Cell mean{};
  for (const Cell* cell = first; cell != end; ++cell) {
    for (std::size_t k = 0; k < 4; ++k) mean[k] += (*cell)[k] / static_cast<double>(end - first);
  }
  return mean;
}

}  // namespace

std::vector<unsigned long> MosaicOrders(const FrameSamples& frame) {
  std::vector<Cell> cells = CellsOf(frame);
  // Fine detail differs within a cell, so neighbouring cells are compared by their means.
  double diagonals[2] = {};
  for (std::size_t i = 0; i + kNear <= cells.size(); i += kNear) {
    const Cell mean = MeanOf(&cells[i], &cells[i] + kNear);
    diagonals[0] += std::abs(mean[0] - mean[3]);
    diagonals[1] += std::abs(mean[1] - mean[2]);
  }
  const bool greenFirst = diagonals[0] < diagonals[1];
  const std::size_t green = greenFirst ? 0 : 1;  // in the upper row
  const std::size_t upper = 1 - green, lower = 2 + green;

  // Bright things are mostly gray: they show whether the colours are balanced. Saturated ones show nothing.
  const Cell all = MeanOf(cells.data(), cells.data() + cells.size());
  double white = 0;
  for (const Cell& cell : cells) white = std::max(white, *std::max_element(cell.begin(), cell.end()));
  const auto unsaturated = std::partition(cells.begin(), cells.end(), [white](const Cell& cell) {
    return *std::max_element(cell.begin(), cell.end()) < 0.95 * white;
  });
  const std::ptrdiff_t bright = (unsaturated - cells.begin() + 9) / 10;
  std::nth_element(cells.begin(), cells.begin() + bright, unsaturated,
                   [](const Cell& a, const Cell& b) { return Sum(a) > Sum(b); });
  const Cell light = MeanOf(cells.data(), cells.data() + bright);
  const double greenLight = (light[green] + light[3 - green]) / 2;
  const bool isBalanced = greenLight < 1.05 * std::max(light[upper], light[lower]);
  const bool redFirst = isBalanced ? all[upper] > 0.9 * all[lower] : light[upper] < 1.15 * light[lower];

  std::vector<unsigned long> orders = {ConversionFlags::kBayerRG, ConversionFlags::kBayerBG, ConversionFlags::kBayerGR,
                                       ConversionFlags::kBayerGB};
  if (!redFirst) {
    std::swap(orders[0], orders[1]);
    std::swap(orders[2], orders[3]);
  }
  if (greenFirst) std::rotate(orders.begin(), orders.begin() + 2, orders.end());
  return orders;
}

double ChromaRarity(const FrameSamples& frame) {
  double red = 0, blue = 0, luma = 0, rarity = 0;
  std::vector<Statistics> chroma;
  for (const Channel& channel : frame.Map().channels) {
    if (channel.name == 'p') continue;
    const Statistics measured = Measure(frame, channel);
    if (channel.name == 'R') red = measured.mean;
    if (channel.name == 'B') blue = measured.mean;
    if (channel.name == 'Y') luma = measured.deviation;
    if (channel.name == 'U' || channel.name == 'V') chroma.push_back(measured);
  }
  for (const Statistics& measured : chroma) {
    const bool isLikely = std::abs(measured.mean - 0.5) < 0.2 && measured.deviation < 0.7 * luma;
    rarity += isLikely ? -0.02 : 0.2;
  }
  if (blue > 1.02 * red) rarity += 0.005;
  return rarity;
}

}  // namespace LmPage
