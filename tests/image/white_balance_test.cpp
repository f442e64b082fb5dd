#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/WhiteBalance.h"

namespace LmImagingLib {
namespace {

using Method = WhiteBalanceOptions::Method;
namespace Flags = ConversionFlags;

constexpr PixelTypeID kPacked12 = 0x420A0C;      // pairs of pixels, the last one alone
constexpr unsigned kWidth = 2303, kHeight = 37;  // more than a strip, odd

// A scene of noise under a light with weak red and blue, with overexposed and dark places.
struct Scene {
  explicit Scene(unsigned depth) : white((1U << depth) - 1), samples(3 * kWidth * kHeight) {
    std::mt19937 random(7);
    for (unsigned i = 0; i < kWidth * kHeight; ++i) {
      const double gray = static_cast<double>(random() % 1000) / 900;
      const double light[] = {0.5, 1.0, 0.8};
      for (unsigned k = 0; k < 3; ++k) {
        samples[3 * i + k] = static_cast<unsigned>(std::min(gray * light[k], 1.0) * white);
      }
    }
  }
  unsigned At(unsigned x, unsigned y, unsigned channel) const { return samples[3 * (y * kWidth + x) + channel]; }

  unsigned white;
  std::vector<unsigned> samples;
};

struct Case {
  const char* name;
  PixelTypeID type;
  unsigned long layout;
  unsigned depth;
  Method method;
  double black;
};

// The samples of a cell: red, both greens, blue.
struct Cell {
  unsigned red, green1, green2, blue;
};

Cell CellAt(const Scene& scene, const Case& c, unsigned x, unsigned y) {
  if (c.layout == 0) return {scene.At(x, y, 0), scene.At(x, y, 1), scene.At(x, y, 1), scene.At(x, y, 2)};
  const bool redRight = c.layout == Flags::kBayerGR || c.layout == Flags::kBayerBG;
  const bool redBelow = c.layout == Flags::kBayerGB || c.layout == Flags::kBayerBG;
  const unsigned r = redRight ? 1 : 0, b = redBelow ? 1 : 0;
  return {scene.At(2 * x + r, 2 * y + b, 0), scene.At(2 * x + 1 - r, 2 * y + b, 1),
          scene.At(2 * x + r, 2 * y + 1 - b, 1), scene.At(2 * x + 1 - r, 2 * y + 1 - b, 2)};
}

// The definition, in plain words.
WhiteBalance Plain(const Scene& scene, const Case& c, const WhiteBalanceOptions& options) {
  const unsigned per = c.layout == 0 ? 1 : 2;
  const bool whole = c.method != WhiteBalanceOptions::kRectangle;
  const unsigned left = whole ? 0 : (static_cast<unsigned>(options.x) + per - 1) / per;
  const unsigned top = whole ? 0 : (static_cast<unsigned>(options.y) + per - 1) / per;
  const unsigned right = (whole ? kWidth : static_cast<unsigned>(options.x + options.width)) / per;
  const unsigned bottom = (whole ? kHeight : static_cast<unsigned>(options.y + options.height)) / per;
  const unsigned low = scene.white / 50, high = scene.white - scene.white / 50;
  WhiteBalance found;
  std::vector<double> levels[3];
  for (unsigned y = top; y < bottom; y += whole ? 4 : 1) {
    for (unsigned x = left; x < right; x += whole ? 4 : 1) {
      ++found.cells;
      const Cell cell = CellAt(scene, c, x, y);
      const auto [least, most] = std::minmax({cell.red, cell.green1, cell.green2, cell.blue});
      if (least < low || most > high) continue;
      ++found.usableCells;
      levels[0].push_back(cell.red);
      levels[1].push_back((cell.green1 + cell.green2) / 2.0);
      levels[2].push_back(cell.blue);
    }
  }
  double gray[3], common = 0;
  for (unsigned k = 0; k < 3; ++k) {
    std::sort(levels[k].begin(), levels[k].end());
    double sum = 0;
    for (const double level : levels[k]) sum += level;
    gray[k] = (c.method == WhiteBalanceOptions::kWhitePatch ? levels[k][levels[k].size() - levels[k].size() / 100 - 1]
                                                            : sum / static_cast<double>(levels[k].size())) -
              c.black;
    common = std::max(common, gray[k] * scene.white / (scene.white - c.black));
  }
  found.gains = {common / gray[0], common / gray[1], common / gray[2]};
  return found;
}

// The image of a scene: words or bytes, a mosaic or interleaved colours.
std::vector<std::uint8_t> Encode(const Scene& scene, const Case& c, bool blueFirst) {
  std::vector<std::uint8_t> bytes;
  unsigned count = 0;
  const auto add = [&](unsigned sample) {
    if (c.type == kPacked12 && count++ % 2 != 0) {  // two samples in three bytes
      bytes.back() = static_cast<std::uint8_t>(bytes.back() | (sample & 15) << 4);
      bytes.push_back(static_cast<std::uint8_t>(sample >> 4));
      return;
    }
    bytes.push_back(static_cast<std::uint8_t>(sample));
    if (c.depth > 8) bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
  };
  for (unsigned y = 0; y < kHeight; ++y, count = 0) {
    for (unsigned x = 0; x < kWidth; ++x) {
      if (c.layout == 0) {
        for (unsigned k = 0; k < 3; ++k) add(scene.At(x, y, blueFirst ? 2 - k : k));
      } else {
        const bool redColumn = (x % 2 == 1) == (c.layout == Flags::kBayerGR || c.layout == Flags::kBayerBG);
        const bool redRow = (y % 2 == 1) == (c.layout == Flags::kBayerGB || c.layout == Flags::kBayerBG);
        add(scene.At(x, y, redRow == redColumn ? (redRow ? 0U : 2U) : 1U));
      }
    }
  }
  return bytes;
}

TEST(WhiteBalance, FollowsThePlainFormula) {
  RegisterExtendedFormats();
  const Case cases[] = {
      {"10-bit mosaic", 0x20011, Flags::kBayerRG, 10, WhiteBalanceOptions::kGrayWorld, 0},
      {"12-bit mosaic", 0x20012, Flags::kBayerGB, 12, WhiteBalanceOptions::kWhitePatch, 0},
      {"8-bit mosaic, black", 0x20010, Flags::kBayerBG, 8, WhiteBalanceOptions::kGrayWorld, 3.5},
      {"12-bit mosaic, black", 0x20012, Flags::kBayerGR, 12, WhiteBalanceOptions::kRectangle, 60},
      {"RGB24", 0x20002, 0, 8, WhiteBalanceOptions::kGrayWorld, 0},
      {"RGB24, patch", 0x20002, 0, 8, WhiteBalanceOptions::kWhitePatch, 0},
      {"BGR48 of 12 bits", 0x20043, 0, 12, WhiteBalanceOptions::kRectangle, 0},
      {"12 bits, packed", kPacked12, 0, 12, WhiteBalanceOptions::kGrayWorld, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Scene scene(c.depth);
    const std::vector<std::uint8_t> bytes = Encode(scene, c, c.type == 0x20043);
    WhiteBalanceOptions options{c.method, 2031, 3, 120, 21, c.layout, {c.black, c.black, c.black}};
    const WhiteBalance found = EstimateWhiteBalance({c.type, bytes.data(), bytes.size(), kWidth, kHeight}, options);
    ASSERT_TRUE(found.IsFound()) << found.message;
    const WhiteBalance plain = Plain(scene, c, options);
    EXPECT_EQ(found.cells, plain.cells);
    EXPECT_EQ(found.usableCells, plain.usableCells);
    // A percentile comes to the middle of one of 1024 bins.
    const double error = c.method == WhiteBalanceOptions::kWhitePatch ? 0.01 : 1e-9;
    EXPECT_NEAR(found.gains.red, plain.gains.red, error);
    EXPECT_NEAR(found.gains.green, plain.gains.green, error);
    EXPECT_NEAR(found.gains.blue, plain.gains.blue, error);
  }
}

TEST(WhiteBalance, KeepsGainsOfOneAndSaysWhyWhereTooLittleIsUsable) {
  const std::vector<std::uint8_t> dark(100 * 100, 2);
  const WhiteBalance found =
      EstimateWhiteBalance({0x20010, dark.data(), dark.size(), 100, 100}, {Method{}, 0, 0, 0, 0, Flags::kBayerRG});
  EXPECT_TRUE(found.result.IsOK());
  EXPECT_FALSE(found.IsFound());
  EXPECT_EQ(found.cells, 13U * 13U);
  EXPECT_EQ(found.usableCells, 0U);
  EXPECT_EQ(found.gains.red, 1);
  EXPECT_NE(found.message.find("0 of 169"), std::string::npos) << found.message;
}

TEST(WhiteBalance, RefusesWithASentence) {
  const std::vector<std::uint8_t> bytes(64);
  struct Refusal {
    const char* what;
    void (*spoil)(ConstImageView& source, WhiteBalanceOptions& options);
    const char* names;
  };
  using C = ConstImageView;
  using O = WhiteBalanceOptions;
  const Refusal refusals[] = {
      {"small buffer", [](C& s, O&) { s.size = 63; }, "source.size is 63"},
      {"gray", [](C& s, O&) { s.type = 0x10001; }, "source.type is 'Grayscale"},
      {"no layout", [](C&, O& o) { o.flags = 0; }, "no Bayer layouts"},
      {"a method of demosaicing", [](C&, O& o) { o.flags |= Flags::kAdaptive; }, "0x400"},
      {"outside", [](C&, O& o) { o = {O::kRectangle, 6, 0, 3, 2, o.flags}; }, "6, 0, 3 and 2"},
      {"no whole cell", [](C&, O& o) { o = {O::kRectangle, 1, 1, 2, 2, o.flags}; }, "whole cell"},
      {"black", [](C&, O& o) { o.black.green = 255; }, "options.black has 255"},
      {"unknown method", [](C&, O& o) { o.method = static_cast<Method>(3); }, "options.method is 3"},
  };
  for (const Refusal& refusal : refusals) {
    ConstImageView source{0x20010, bytes.data(), bytes.size(), 8, 8};
    WhiteBalanceOptions options{O::kGrayWorld, 0, 0, 0, 0, Flags::kBayerRG};
    refusal.spoil(source, options);
    const WhiteBalance found = EstimateWhiteBalance(source, options);
    EXPECT_EQ(found.result.GetCode(), LmBaseLib::Result::INVALID_PARAMETER) << refusal.what;
    EXPECT_NE(found.message.find(refusal.names), std::string::npos) << refusal.what << ": " << found.message;
  }
}

}  // namespace
}  // namespace LmImagingLib
