#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "simd/each_set.h"

// The vector kernels work in 16 bits what the definition works in 32: here for every triple there is.

namespace LmImagingLib {
namespace {

std::uint8_t Clamped(int scaled) { return static_cast<std::uint8_t>(std::clamp((scaled + 512) >> 10, 0, 255)); }

// The colour of every U and V with one Y, in the order of the source below.
std::vector<std::uint8_t> Expected(int y) {
  std::vector<std::uint8_t> colors;
  for (int u = 0; u < 256; ++u) {
    for (int v = 0; v < 256; ++v) {
      const int luma = 1196 * y - 19136;
      colors.push_back(Clamped(luma + 1642 * (v - 128)));
      colors.push_back(Clamped(luma - 832 * (v - 128) - 400 * (u - 128)));
      colors.push_back(Clamped(luma + 2064 * (u - 128)));
    }
  }
  return colors;
}

TEST(YuvToRgb, EveryTripleInEachInstructionSet) {
  const PixelConverter& yuv444 = *PixelTypeFactory::FindConverter(0x440003, 0x420002);
  const PixelConverter& yuv422 = *PixelTypeFactory::FindConverter(0x40001, 0x420002);
  constexpr unsigned long kSide = 256;
  std::vector<std::uint8_t> source444(kSide * kSide * 3);
  std::vector<std::uint8_t> source422(kSide * kSide * 4);
  std::vector<std::uint8_t> picture(kSide * kSide * 3);
  std::vector<std::uint8_t> pairs(kSide * kSide * 6);
  for (std::size_t y = 0; y < 256; ++y) {
    for (std::size_t i = 0; i < kSide * kSide; ++i) {
      const auto luma = static_cast<std::uint8_t>(y);
      const auto u = static_cast<std::uint8_t>(i / 256);
      const auto v = static_cast<std::uint8_t>(i % 256);
      const std::uint8_t triple[] = {luma, u, v};
      const std::uint8_t pair[] = {luma, u, luma, v};
      std::copy_n(triple, 3, &source444[3 * i]);
      std::copy_n(pair, 4, &source422[4 * i]);
    }
    const std::vector<std::uint8_t> expected = Expected(static_cast<int>(y));
    ForEachInstructionSet([&] {
      yuv444.Convert(source444.data(), kSide, kSide, picture.data(), kSide, kSide, kSide, kSide, 0, 0, nullptr,
                     nullptr);
      ASSERT_EQ(picture, expected) << "Y " << y;
      yuv422.Convert(source422.data(), 2 * kSide, kSide, pairs.data(), 2 * kSide, kSide, 2 * kSide, kSide, 0, 0,
                     nullptr, nullptr);
      for (std::size_t i = 0; i < kSide * kSide * 6; ++i) {
        ASSERT_EQ(pairs[i], expected[i / 6 * 3 + i % 3]) << "Y " << y;
      }
    });
  }
}

}  // namespace
}  // namespace LmImagingLib
