#include "sizes.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace LmPage {

namespace {

struct Known {
  std::size_t width, height;
};

// Sensors of machine-vision cameras and modes of video.
constexpr Known kKnown[] = {
    {320, 240},   {640, 480},   {648, 488},   {656, 492},   {720, 480},   {720, 540},   {720, 576},    {752, 480},
    {768, 576},   {776, 582},   {780, 580},   {800, 600},   {808, 608},   {960, 540},   {1024, 768},   {1024, 1024},
    {1032, 776},  {1034, 779},  {1280, 720},  {1280, 800},  {1280, 960},  {1280, 1024}, {1292, 964},   {1296, 966},
    {1360, 1024}, {1388, 1038}, {1392, 1040}, {1440, 1080}, {1456, 1088}, {1600, 1200}, {1624, 1234},  {1624, 1240},
    {1626, 1236}, {1628, 1236}, {1920, 1080}, {1920, 1200}, {1936, 1216}, {1936, 1464}, {2040, 1086},  {2048, 1088},
    {2048, 1536}, {2048, 2048}, {2064, 1544}, {2336, 1752}, {2352, 1728}, {2432, 2048}, {2448, 2048},  {2456, 2058},
    {2464, 2056}, {2560, 1440}, {2560, 2048}, {2588, 1958}, {2592, 1944}, {2592, 2048}, {2736, 1824},  {2840, 2840},
    {3072, 2048}, {3088, 2064}, {3208, 2200}, {3216, 2208}, {3264, 2448}, {3280, 2464}, {3296, 2472},  {3376, 2704},
    {3536, 3536}, {3664, 2748}, {3840, 2160}, {3840, 2748}, {4000, 3000}, {4024, 3036}, {4032, 3040},  {4056, 3040},
    {4096, 2160}, {4096, 2168}, {4096, 3000}, {4096, 3072}, {4096, 4096}, {4112, 2176}, {4112, 3008},  {4504, 4504},
    {4508, 4096}, {4608, 2592}, {5120, 5120}, {5320, 3032}, {5328, 3040}, {5328, 4608}, {5472, 3648},  {5496, 3672},
    {6464, 4852}, {6576, 4384}, {7920, 6004}, {8192, 5460}, {9344, 7000}, {9568, 6380}, {14192, 10640}};

double RarityOf(std::size_t width, std::size_t height) {
  const auto isIt = [&](const Known& known) { return known.width == width && known.height == height; };
  if (std::any_of(std::begin(kKnown), std::end(kKnown), isIt)) return 0;
  // 1:1 to 16:9 are as common as the rest of the sizes; lines of whole words are commoner than others.
  const double aspect = static_cast<double>(width) / static_cast<double>(height);
  double rarity = 0.02;
  rarity += 0.05 * std::max({0.0, std::log2(0.98 / aspect), std::log2(aspect / 1.8)});
  if (width % 4 != 0) rarity += 0.02;
  if (height % 2 != 0) rarity += 0.02;
  return rarity;
}

}  // namespace

std::vector<Size> SizesOf(std::size_t pixels, const GuessOptions& options) {
  constexpr std::size_t kLeast = 8, kMost = 65535, kFlattest = 10, kSteepest = 6;
  std::vector<Size> sizes;
  const auto add = [&](std::size_t width, std::size_t height) {
    if (options.width != 0 && options.width != width) return;
    if (options.height != 0 && options.height != height) return;
    const bool isKnown = options.width != 0 || options.height != 0;
    if (width < kLeast || height < kLeast || width > kMost || height > kMost) return;
    if (!isKnown && (width > kFlattest * height || height > kSteepest * width)) return;
    sizes.push_back({width, height, RarityOf(width, height)});
  };
  for (std::size_t side = 1; side * side <= pixels; ++side) {
    if (pixels % side != 0) continue;
    add(side, pixels / side);
    if (side * side != pixels) add(pixels / side, side);
  }
  return sizes;
}

}  // namespace LmPage
